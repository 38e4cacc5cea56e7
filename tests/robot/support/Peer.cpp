// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/robot/support/Peer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

namespace KODMS::Tests {

namespace {

constexpr int PatienceMs = 20000;

} // namespace

Peer::Peer(quint16 port) : m_socket(::socket(AF_INET, SOCK_STREAM, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        close();
    else
        ::fcntl(m_socket, F_SETFL, O_NONBLOCK);
}

Peer::~Peer()
{
    close();
}

bool Peer::send(const QByteArray &bytes)
{
    QElapsedTimer watch;
    watch.start();
    int sent = 0;
    while (sent < bytes.size() && watch.elapsed() < PatienceMs) {
        const ssize_t count = ::send(m_socket, bytes.constData() + sent,
                                     static_cast<size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (count > 0)
            sent += static_cast<int>(count);
        else if (errno == EAGAIN || errno == EWOULDBLOCK)
            QTest::qWait(1);
        else
            return false;
    }
    return sent == bytes.size();
}

void Peer::halfClose()
{
    ::shutdown(m_socket, SHUT_WR);
}

void Peer::reset()
{
    const linger atOnce{1, 0};
    ::setsockopt(m_socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    close();
}

void Peer::close()
{
    if (m_socket >= 0)
        ::close(m_socket);
    m_socket = -1;
}

QByteArray Peer::received()
{
    char data[4096];
    while (!m_isOver && m_socket >= 0) {
        const ssize_t count = ::recv(m_socket, data, sizeof data, 0);
        if (count > 0)
            m_received.append(data, static_cast<int>(count));
        else if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR))
            break;
        else
            m_isOver = true;
    }
    return m_received;
}

QByteArray Peer::answer(bool *isOver, int patienceMs)
{
    QElapsedTimer watch;
    watch.start();
    while (received(), !m_isOver && watch.elapsed() < patienceMs) {
        QCoreApplication::processEvents();
        pollfd waiting{m_socket, POLLIN, 0};
        ::poll(&waiting, 1, 1);
    }
    if (isOver)
        *isOver = m_isOver;
    return m_received;
}

} // namespace KODMS::Tests
