// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/PeerSocket.h"

#include <QHostAddress>

#include <winsock2.h>

#include <ws2tcpip.h>

namespace KODMS::Robot {

namespace {

int resultOf(int count)
{
    if (count >= 0)
        return count;
    return ::WSAGetLastError() == WSAEWOULDBLOCK ? PeerSocket::Later : PeerSocket::Broken;
}

SOCKET systemSocket(qintptr socket)
{
    return static_cast<SOCKET>(socket);
}

} // namespace

PeerSocket::PeerSocket(qintptr socket) : m_socket(socket)
{
    u_long isOn = 1;
    ::ioctlsocket(systemSocket(socket), FIONBIO, &isOn);
}

PeerSocket::~PeerSocket()
{
    close();
}

QString PeerSocket::peerText() const
{
    sockaddr_storage address{};
    int size = sizeof address;
    if (::getpeername(systemSocket(m_socket), reinterpret_cast<sockaddr *>(&address), &size) != 0)
        return QStringLiteral("?");
    const bool isV6 = address.ss_family == AF_INET6;
    const quint16 port = isV6 ? reinterpret_cast<const sockaddr_in6 *>(&address)->sin6_port
                              : reinterpret_cast<const sockaddr_in *>(&address)->sin_port;
    const QString host = QHostAddress(reinterpret_cast<const sockaddr *>(&address)).toString();
    return (isV6 ? QStringLiteral("[%1]:%2") : QStringLiteral("%1:%2")).arg(host).arg(ntohs(port));
}

int PeerSocket::receive(char *buffer, int size)
{
    return resultOf(::recv(systemSocket(m_socket), buffer, size, 0));
}

int PeerSocket::send(const char *data, int size)
{
    return resultOf(::send(systemSocket(m_socket), data, size, 0));
}

void PeerSocket::endSending()
{
    ::shutdown(systemSocket(m_socket), SD_SEND);
}

void PeerSocket::close()
{
    if (m_isOpen)
        ::closesocket(systemSocket(m_socket));
    m_isOpen = false;
}

} // namespace KODMS::Robot
