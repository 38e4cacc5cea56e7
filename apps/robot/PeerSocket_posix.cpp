// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/PeerSocket.h"

#include <QHostAddress>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

namespace KODMS::Robot {

namespace {

int resultOf(ssize_t count)
{
    if (count >= 0)
        return static_cast<int>(count);
    const bool isLater = errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
    return isLater ? PeerSocket::Later : PeerSocket::Broken;
}

int fd(qintptr socket)
{
    return static_cast<int>(socket);
}

} // namespace

PeerSocket::PeerSocket(qintptr socket) : m_socket(socket)
{
    ::fcntl(fd(socket), F_SETFL, ::fcntl(fd(socket), F_GETFL) | O_NONBLOCK);
}

PeerSocket::~PeerSocket()
{
    close();
}

QString PeerSocket::peerText() const
{
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    if (::getpeername(fd(m_socket), reinterpret_cast<sockaddr *>(&address), &size) != 0)
        return QStringLiteral("?");
    const bool isV6 = address.ss_family == AF_INET6;
    const quint16 port = isV6 ? reinterpret_cast<const sockaddr_in6 *>(&address)->sin6_port
                              : reinterpret_cast<const sockaddr_in *>(&address)->sin_port;
    const QString host = QHostAddress(reinterpret_cast<const sockaddr *>(&address)).toString();
    return (isV6 ? QStringLiteral("[%1]:%2") : QStringLiteral("%1:%2")).arg(host).arg(ntohs(port));
}

int PeerSocket::receive(char *buffer, int size)
{
    return resultOf(::recv(fd(m_socket), buffer, static_cast<std::size_t>(size), 0));
}

int PeerSocket::send(const char *data, int size)
{
    return resultOf(::send(fd(m_socket), data, static_cast<std::size_t>(size), MSG_NOSIGNAL));
}

void PeerSocket::endSending()
{
    ::shutdown(fd(m_socket), SHUT_WR);
}

void PeerSocket::close()
{
    if (m_isOpen)
        ::close(fd(m_socket));
    m_isOpen = false;
}

} // namespace KODMS::Robot
