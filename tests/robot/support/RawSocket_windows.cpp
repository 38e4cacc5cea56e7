// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/robot/support/RawSocket.h"

#include <winsock2.h>

namespace KODMS::Tests {

namespace {

SOCKET systemSocket(qintptr socket)
{
    return static_cast<SOCKET>(socket);
}

/// A socket of a process that has started its sockets, once.
qintptr newSocket()
{
    static const int started = [] {
        WSADATA data{};
        return ::WSAStartup(MAKEWORD(2, 2), &data);
    }();
    if (started != 0)
        qFatal("the test has no sockets");
    return static_cast<qintptr>(::socket(AF_INET, SOCK_STREAM, 0));
}

int resultOf(int count)
{
    if (count > 0)
        return count;
    const bool isLater = count < 0 && ::WSAGetLastError() == WSAEWOULDBLOCK;
    return isLater ? RawSocket::Later : RawSocket::Over;
}

} // namespace

RawSocket::RawSocket(quint16 port) : m_socket(newSocket()), m_isOpen(true)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const auto *place = reinterpret_cast<const sockaddr *>(&address);
    u_long isOn = 1;
    if (::connect(systemSocket(m_socket), place, sizeof address) != 0)
        close();
    else
        ::ioctlsocket(systemSocket(m_socket), FIONBIO, &isOn);
}

RawSocket::~RawSocket()
{
    close();
}

int RawSocket::send(const char *data, int size)
{
    return resultOf(::send(systemSocket(m_socket), data, size, 0));
}

int RawSocket::receive(char *buffer, int size)
{
    return resultOf(::recv(systemSocket(m_socket), buffer, size, 0));
}

void RawSocket::waitForData(int milliseconds)
{
    fd_set waiting{};
    FD_SET(systemSocket(m_socket), &waiting);
    timeval patience{milliseconds / 1000, milliseconds % 1000 * 1000};
    ::select(0, &waiting, nullptr, nullptr, &patience);
}

void RawSocket::endSending()
{
    ::shutdown(systemSocket(m_socket), SD_SEND);
}

void RawSocket::breakOff()
{
    const linger atOnce{1, 0};
    ::setsockopt(systemSocket(m_socket), SOL_SOCKET, SO_LINGER,
                 reinterpret_cast<const char *>(&atOnce), sizeof atOnce);
    close();
}

void RawSocket::close()
{
    if (m_isOpen)
        ::closesocket(systemSocket(m_socket));
    m_isOpen = false;
}

} // namespace KODMS::Tests
