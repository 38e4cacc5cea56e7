// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/robot/support/RawSocket.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

namespace KODMS::Tests {

namespace {

int descriptor(qintptr socket)
{
    return static_cast<int>(socket);
}

int resultOf(ssize_t count)
{
    if (count > 0)
        return static_cast<int>(count);
    const bool isLater = count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR);
    return isLater ? RawSocket::Later : RawSocket::Over;
}

} // namespace

RawSocket::RawSocket(quint16 port) : m_socket(::socket(AF_INET, SOCK_STREAM, 0)), m_isOpen(true)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const auto *place = reinterpret_cast<const sockaddr *>(&address);
    if (::connect(descriptor(m_socket), place, sizeof address) != 0)
        close();
    else
        ::fcntl(descriptor(m_socket), F_SETFL, O_NONBLOCK);
}

RawSocket::~RawSocket()
{
    close();
}

int RawSocket::send(const char *data, int size)
{
    return resultOf(::send(descriptor(m_socket), data, static_cast<size_t>(size), MSG_NOSIGNAL));
}

int RawSocket::receive(char *buffer, int size)
{
    return resultOf(::recv(descriptor(m_socket), buffer, static_cast<size_t>(size), 0));
}

void RawSocket::waitForData(int milliseconds)
{
    pollfd waiting{descriptor(m_socket), POLLIN, 0};
    ::poll(&waiting, 1, milliseconds);
}

void RawSocket::endSending()
{
    ::shutdown(descriptor(m_socket), SHUT_WR);
}

void RawSocket::breakOff()
{
    const linger atOnce{1, 0};
    ::setsockopt(descriptor(m_socket), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    close();
}

void RawSocket::close()
{
    if (m_isOpen)
        ::close(descriptor(m_socket));
    m_isOpen = false;
}

} // namespace KODMS::Tests
