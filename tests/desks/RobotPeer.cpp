// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/RobotPeer.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>

#include <memory>

namespace KODMS::Tests {

namespace {

constexpr int PollMs = 20;
constexpr int PatienceMs = 10000;
constexpr int FloodBytes = 10 * 1024 * 1024;

void require(bool ok, const char *what)
{
    if (!ok)
        qFatal("the test's own peer: %s", what);
}

} // namespace

RobotPeer::RobotPeer(Manner manner) : m_manner(manner)
{
    start();
    QElapsedTimer waited;
    waited.start();
    while (m_port == 0 && waited.elapsed() < PatienceMs)
        QThread::msleep(1);
    require(m_port != 0, "does not listen");
}

RobotPeer::~RobotPeer()
{
    m_stop = true;
    wait();
}

QByteArray RobotPeer::received(int connections)
{
    QElapsedTimer waited;
    waited.start();
    while (m_ended < connections && waited.elapsed() < PatienceMs)
        QThread::msleep(1);
    const QMutexLocker lock(&m_mutex);
    return m_received;
}

void RobotPeer::run()
{
    QTcpServer server;
    require(server.listen(QHostAddress::LocalHost), "cannot listen");
    m_port = server.serverPort();
    while (!m_stop)
        if (server.waitForNewConnection(PollMs))
            serve(server);
}

void RobotPeer::serve(QTcpServer &server)
{
    const std::unique_ptr<QTcpSocket> socket(server.nextPendingConnection());
    ++m_connections;
    if (m_manner == Manner::GreetsFirst)
        socket->write("hello\n");
    if (m_manner == Manner::FloodsFirst)
        socket->write(QByteArray(FloodBytes, 'x'));
    if (m_manner == Manner::ClosesAtOnce)
        socket->abort();
    QByteArray bytes;
    while (!m_stop && socket->state() == QAbstractSocket::ConnectedState) {
        if (!socket->waitForReadyRead(PollMs))
            continue;
        bytes += socket->readAll();
        if (m_manner == Manner::AnswersAtOnce)
            socket->write("{}\n");
    }
    if (socket->isOpen())
        bytes += socket->readAll();
    const QMutexLocker lock(&m_mutex);
    m_received += bytes;
    ++m_ended;
}

quint16 refusedPort()
{
    QTcpServer server;
    require(server.listen(QHostAddress::LocalHost), "cannot listen");
    return server.serverPort();
}

} // namespace KODMS::Tests
