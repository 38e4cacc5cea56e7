// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/robot/support/Peer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>

namespace KODMS::Tests {

namespace {

constexpr int PatienceMs = 20000;

} // namespace

bool Peer::send(const QByteArray &bytes)
{
    QElapsedTimer watch;
    watch.start();
    int sent = 0;
    while (sent < bytes.size() && watch.elapsed() < PatienceMs) {
        const int count = m_socket.send(bytes.constData() + sent, bytes.size() - sent);
        if (count > 0)
            sent += count;
        else if (count == RawSocket::Later)
            QTest::qWait(1);
        else
            return false;
    }
    return sent == bytes.size();
}

QByteArray Peer::received()
{
    char data[4096];
    while (!m_isOver && m_socket.isOpen()) {
        const int count = m_socket.receive(data, sizeof data);
        if (count > 0)
            m_received.append(data, count);
        else if (count == RawSocket::Later)
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
        m_socket.waitForData(1);
    }
    if (isOver)
        *isOver = m_isOver;
    return m_received;
}

} // namespace KODMS::Tests
