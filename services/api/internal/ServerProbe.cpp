// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/ServerProbe.h"

namespace KODMS::Services {

ServerProbe::ServerProbe()
{
    connect(&m_socket, &QTcpSocket::connected, this, [this] {
        m_socket.abort();
        Q_EMIT answered();
    });
}

void ServerProbe::ask(const QString &host, int port)
{
    if (host.isEmpty() || host.startsWith(QLatin1Char('/'))) { // of a folder: a local socket
        Q_EMIT answered();
        return;
    }
    m_socket.abort();
    m_socket.connectToHost(host, static_cast<quint16>(port));
}

} // namespace KODMS::Services
