// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/Connection.h"

#include "apps/robot/RobotLog.h"

namespace KODMS::Robot {

Connection::Connection(qintptr socket, const ConnectionRules &rules, const RequestHandler &handler,
                       QObject *parent)
    : QObject(parent), m_socket(socket), m_rules(rules), m_handler(handler),
      m_peer(m_socket.peerText()), m_readable(socket, QSocketNotifier::Read),
      m_writable(socket, QSocketNotifier::Write)
{
    m_writable.setEnabled(false);
    m_limit.setSingleShot(true);
    m_nextByte.setSingleShot(true);
    connect(&m_readable, &QSocketNotifier::activated, this, [this] { readMore(); });
    connect(&m_writable, &QSocketNotifier::activated, this, [this] { writeMore(); });
    connect(&m_limit, &QTimer::timeout, this, [this] { timeUp(); });
    connect(&m_nextByte, &QTimer::timeout, this, [this] { writeMore(); });
    enter(Stage::Reading, rules.requestLimit);
}

Connection::~Connection()
{
    m_readable.setEnabled(false);
    m_writable.setEnabled(false);
}

void Connection::enter(Stage stage, int limit)
{
    m_stage = stage;
    m_limit.start(limit);
}

/// A little at a time, so that a peer that never stops sending leaves room for the others; but
/// until nothing is there: Windows tells only once that a peer has closed, and may do so while
/// something of his is still unread.
void Connection::readMore()
{
    constexpr int pieces = 16;
    char data[4096];
    for (int i = 0; i < pieces && m_stage != Stage::Over && !m_isPeerDone; ++i) {
        const int count = m_socket.receive(data, sizeof data);
        if (count == PeerSocket::Later)
            return;
        if (count > 0)
            receive(data, count);
        else if (count == 0)
            peerClosed();
        else
            finish();
    }
}

void Connection::receive(const char *data, int size)
{
    if (m_stage != Stage::Reading)
        return; // one request a connection; what else comes is thrown away
    switch (m_scanner.feed(data, size)) {
    case RequestScanner::State::Incomplete:
        return;
    case RequestScanner::State::Complete:
        decide();
        return;
    case RequestScanner::State::Faulty:
        refuse(m_scanner.fault());
        return;
    }
}

void Connection::peerClosed()
{
    m_isPeerDone = true;
    m_readable.setEnabled(false);
    if (m_stage == Stage::Reading)
        refuse(m_scanner.isEmpty() ? QStringLiteral("nothing was sent")
                                   : QStringLiteral("the request breaks off"));
    else if (m_stage != Stage::Answering)
        finish();
}

void Connection::timeUp()
{
    if (m_stage == Stage::Reading)
        refuse(QStringLiteral("no complete request within %1 ms").arg(m_rules.requestLimit));
    else
        finish();
}

void Connection::decide()
{
    const auto request = RobotRequest::read(m_scanner);
    if (!request) {
        refuse(request.text());
        return;
    }
    const RobotAnswer decided = m_handler(request.value);
    say(request.value.jobName, decided);
    answer(decided);
}

void Connection::refuse(const QString &reason)
{
    const RobotAnswer refusal = RobotAnswer::refused(reason);
    say(QString(), refusal);
    answer(refusal);
}

void Connection::say(const QString &job, const RobotAnswer &answer) const
{
    QString line = QStringLiteral("request from ") + m_peer + QStringLiteral(" job ") +
                   RobotLog::quoted(job) +
                   (answer.isAccepted ? QStringLiteral(": accepted") : QStringLiteral(": refused"));
    if (!answer.isAccepted)
        line += QStringLiteral(", ") + answer.reason.simplified();
    RobotLog::write(line);
}

void Connection::answer(const RobotAnswer &answer)
{
    if (m_rules.manner == ConnectionRules::Manner::Silent) {
        enter(Stage::Silent, m_rules.silenceLimit);
        if (m_isPeerDone)
            finish();
        return;
    }
    m_toSend = answer.toJson();
    enter(Stage::Answering, m_rules.answerLimit);
    if (m_rules.manner == ConnectionRules::Manner::Slow)
        m_nextByte.start(m_rules.slowDelay);
    else
        writeMore();
}

void Connection::writeMore()
{
    const bool isSlow = m_rules.manner == ConnectionRules::Manner::Slow;
    const int count = m_socket.send(m_toSend.constData(), isSlow ? 1 : m_toSend.size());
    if (count == PeerSocket::Broken) {
        finish();
        return;
    }
    m_toSend.remove(0, qMax(count, 0));
    m_writable.setEnabled(!isSlow && !m_toSend.isEmpty());
    if (m_toSend.isEmpty())
        lingerOrFinish();
    else if (isSlow)
        m_nextByte.start(m_rules.slowByte);
}

/// Closing a socket with unread bytes in it would take the answer back from a peer that is still
/// sending.
void Connection::lingerOrFinish()
{
    m_socket.endSending();
    if (m_isPeerDone)
        finish();
    else
        enter(Stage::Lingering, m_rules.lingerLimit);
}

void Connection::finish()
{
    if (m_stage == Stage::Over)
        return;
    m_stage = Stage::Over;
    m_limit.stop();
    m_nextByte.stop();
    m_readable.setEnabled(false);
    m_writable.setEnabled(false);
    m_socket.close();
    Q_EMIT finished();
}

} // namespace KODMS::Robot
