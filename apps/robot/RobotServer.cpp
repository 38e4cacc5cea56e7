// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/RobotServer.h"

#include "apps/robot/Connection.h"
#include "apps/robot/RobotLog.h"

#include <QTimer>

namespace KODMS::Robot {

using Services::Outcome;

static constexpr int AcceptPauseMs = 500;

RobotServer::RobotServer(const ConnectionRules &rules, const RequestHandler &handler)
    : m_rules(rules), m_handler(handler)
{
    // Out of file descriptors, the base class stops accepting for good.
    connect(this, &QTcpServer::acceptError, this, [this] {
        RobotLog::write(QStringLiteral("cannot accept a connection: ") + errorString());
        QTimer::singleShot(AcceptPauseMs, this, &QTcpServer::resumeAccepting);
    });
}

Outcome RobotServer::listenAt(const QHostAddress &host, quint16 port)
{
    if (listen(host, port))
        return Outcome::success();
    return Outcome::failure(QStringLiteral("cannot listen on %1 port %2: %3")
                                .arg(host.toString())
                                .arg(port)
                                .arg(errorString()));
}

QString RobotServer::place() const
{
    const bool isV6 = serverAddress().protocol() == QAbstractSocket::IPv6Protocol;
    return (isV6 ? QStringLiteral("[%1]:%2") : QStringLiteral("%1:%2"))
        .arg(serverAddress().toString())
        .arg(serverPort());
}

void RobotServer::incomingConnection(qintptr socket)
{
    if (m_connections >= m_rules.mostConnections) {
        PeerSocket(socket).close();
        RobotLog::write(QStringLiteral("a connection was turned away: there are %1 already")
                            .arg(m_connections));
        return;
    }
    ++m_connections;
    auto *connection = new Connection(socket, m_rules, m_handler, this);
    connect(connection, &Connection::finished, this, [this, connection] {
        --m_connections;
        connection->deleteLater();
    });
}

} // namespace KODMS::Robot
