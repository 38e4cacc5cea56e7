// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/robot/support/RobotProcess.h"

#include "tests/robot/support/Peer.h"
#include "tests/robot/support/Requests.h"
#include "tests/robot/support/RobotHouse.h"

#include <QElapsedTimer>

namespace KODMS::Tests {

namespace {

constexpr int PatienceMs = 30000;

} // namespace

RobotProcess::RobotProcess(RobotHouse &house, const QStringList &arguments)
{
    m_process.start(QStringLiteral(KODMS_ROBOT_PROGRAM),
                    QStringList{QStringLiteral("--config"), house.installation().iniPath(),
                                QStringLiteral("--password-file"), house.passwordFile(),
                                QStringLiteral("--port"), QStringLiteral("0")} +
                        arguments);
    m_process.closeWriteChannel();
}

RobotProcess::~RobotProcess()
{
    // Not killed: a delivery that is cut off leaves its packed file in the staging folder.
    if (m_process.state() != QProcess::NotRunning && !end())
        kill();
}

quint16 RobotProcess::port()
{
    while (m_port == 0 && !m_output.contains('\n')) {
        if (!m_process.waitForReadyRead(PatienceMs))
            return 0;
        m_output += m_process.readAllStandardOutput();
    }
    const QByteArray line = m_output.left(m_output.indexOf('\n'));
    m_port = line.mid(line.lastIndexOf(':') + 1).toUShort();
    return m_port;
}

QByteArray RobotProcess::log()
{
    m_process.waitForReadyRead(1);
    m_log += m_process.readAllStandardError();
    return m_log;
}

bool RobotProcess::waitForLog(const QByteArray &text)
{
    QElapsedTimer watch;
    watch.start();
    while (!log().contains(text)) {
        if (watch.elapsed() > PatienceMs || m_process.state() == QProcess::NotRunning)
            return log().contains(text);
        m_process.waitForReadyRead(50);
    }
    return true;
}

QByteArray RobotProcess::ask(const QString &jobName, bool fromWeb)
{
    Peer peer(port());
    peer.send(deskRequest(jobName, fromWeb));
    return peer.answer();
}

int RobotProcess::stop(Signal signal)
{
    send(signal);
    return waitForEnd();
}

bool RobotProcess::end()
{
    if (hasSignals())
        return stop(Signal::Termination) == 0;
    kill();
    return true;
}

int RobotProcess::waitForEnd()
{
    const bool ended =
        m_process.state() == QProcess::NotRunning || m_process.waitForFinished(PatienceMs);
    return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

void RobotProcess::kill()
{
    m_process.kill();
    m_process.waitForFinished(PatienceMs);
}

} // namespace KODMS::Tests
