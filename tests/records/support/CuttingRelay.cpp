// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/records/support/CuttingRelay.h"

#include <QHostAddress>

namespace KODMS::Tests {

CuttingRelay::CuttingRelay(const QString &host, int port) : m_server(new QTcpServer)
{
    if (!m_server->listen(QHostAddress::LocalHost))
        qFatal("no relay: %s", qPrintable(m_server->errorString()));
    m_server->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, m_server, &QObject::deleteLater);
    QObject::connect(m_server, &QTcpServer::newConnection, m_server,
                     [this, host, port] { take(host, port); });
    m_thread.start();
}

CuttingRelay::~CuttingRelay()
{
    m_thread.quit();
    m_thread.wait();
}

void CuttingRelay::cutNext(Cut cut, bool isLast)
{
    m_isLast = isLast;
    m_cut = cut;
}

QByteArray CuttingRelay::heard() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_heard;
}

void CuttingRelay::take(const QString &host, int port)
{
    while (QTcpSocket *client = m_server->nextPendingConnection()) {
        ++m_visits;
        if (m_isShut) {
            client->abort();
            client->deleteLater();
            continue;
        }
        auto *server = new QTcpSocket(client);
        server->connectToHost(host, static_cast<quint16>(port));
        QObject::connect(client, &QTcpSocket::readyRead, server,
                         [this, client, server] { passOn(client, server); });
        QObject::connect(server, &QTcpSocket::readyRead, client,
                         [client, server] { client->write(server->readAll()); });
        QObject::connect(server, &QTcpSocket::disconnected, client,
                         &QTcpSocket::disconnectFromHost);
        QObject::connect(client, &QTcpSocket::disconnected, server,
                         &QTcpSocket::disconnectFromHost);
    }
}

void CuttingRelay::passOn(QTcpSocket *client, QTcpSocket *server)
{
    const QByteArray said = client->readAll();
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_heard += said;
    }
    // With the end of the text: a transaction that begins is READ COMMITTED.
    const QByteArray end("COMMIT", sizeof("COMMIT"));
    if (m_cut == Cut::Never || !said.contains(end)) {
        server->write(said);
        return;
    }
    const Cut cut = m_cut;
    m_isShut = m_isLast.load();
    QObject::disconnect(server, nullptr, client, nullptr);
    QObject::disconnect(client, nullptr, server, nullptr);
    if (cut == Cut::BeforeCommit) {
        server->abort();
    } else {
        server->write(said);
        server->flush();
    }
    constexpr int patience = 30000; // ms
    if (cut == Cut::AfterCommit)
        server->waitForReadyRead(patience);
    if (cut == Cut::InCommit)
        server->setParent(m_server); // its server works on
    m_cut = Cut::Never;
    client->abort();
}

} // namespace KODMS::Tests
