// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/robot/ConnectionRules.h"
#include "services/notices/Outcome.h"

#include <QHostAddress>
#include <QTcpServer>

namespace KODMS::Robot {

/// Listens, and gives every peer a Connection.
class RobotServer : public QTcpServer {
    Q_OBJECT

public:
    RobotServer(const ConnectionRules &rules, const RequestHandler &handler);

    /// Port 0: any free one; serverPort() tells which.
    Services::Outcome listenAt(const QHostAddress &host, quint16 port);

    /// "127.0.0.1:7071", "[::1]:7071".
    QString place() const;

protected:
    void incomingConnection(qintptr socket) override;

private:
    ConnectionRules m_rules;
    RequestHandler m_handler;
    int m_connections = 0;
};

} // namespace KODMS::Robot
