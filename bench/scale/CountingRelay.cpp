// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/scale/CountingRelay.h"

#include <QEventLoop>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

namespace KODMS::Bench {

CountingRelay::CountingRelay(const QString &host, quint16 port)
    : m_host(host), m_port(port), m_thread(QThread::create([this] { serve(); }))
{
    m_thread->start();
    m_isListening.acquire();
}

CountingRelay::~CountingRelay()
{
    QMetaObject::invokeMethod(m_loop, "quit", Qt::QueuedConnection);
    m_thread->wait();
}

Traffic CountingRelay::traffic() const
{
    return {m_sent, m_received, m_roundTrips};
}

void CountingRelay::serve()
{
    QEventLoop loop;
    QTcpServer server;
    m_loop = &loop;
    if (server.listen(QHostAddress::LocalHost))
        m_ownPort = server.serverPort();
    QObject::connect(&server, &QTcpServer::newConnection, &server, [this, &server] {
        while (QTcpSocket *client = server.nextPendingConnection())
            join(client, &server);
    });
    m_isListening.release();
    loop.exec();
}

void CountingRelay::join(QTcpSocket *client, QTcpServer *parent)
{
    auto *upstream = new QTcpSocket(parent);
    client->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    upstream->connectToHost(m_host, m_port);
    upstream->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    auto hasAnswered = std::make_shared<bool>(true);
    QObject::connect(client, &QTcpSocket::readyRead, upstream,
                     [this, client, upstream, hasAnswered] {
                         const QByteArray bytes = client->readAll();
                         m_sent += bytes.size();
                         m_roundTrips += *hasAnswered ? 1 : 0;
                         *hasAnswered = false;
                         upstream->write(bytes);
                     });
    QObject::connect(upstream, &QTcpSocket::readyRead, client,
                     [this, client, upstream, hasAnswered] {
                         const QByteArray bytes = upstream->readAll();
                         m_received += bytes.size();
                         *hasAnswered = true;
                         client->write(bytes);
                     });
    QObject::connect(client, &QTcpSocket::disconnected, upstream, &QTcpSocket::disconnectFromHost);
    QObject::connect(upstream, &QTcpSocket::disconnected, client, &QTcpSocket::disconnectFromHost);
}

} // namespace KODMS::Bench
