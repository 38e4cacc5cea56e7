// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSemaphore>
#include <QString>

#include <atomic>
#include <memory>

class QEventLoop;
class QTcpServer;
class QTcpSocket;
class QThread;

namespace KODMS::Bench {

/// What went over the wire.
struct Traffic {
    qint64 sent = 0; ///< bytes from the clients to the server
    qint64 received = 0;
    qint64 roundTrips = 0; ///< times that a client spoke after it had listened
};

/// Stands between a server and its clients on loopback and counts what it passes on.
/// Works in a thread of its own.
class CountingRelay {
public:
    CountingRelay(const QString &host, quint16 port);
    ~CountingRelay();
    CountingRelay(const CountingRelay &) = delete;
    CountingRelay &operator=(const CountingRelay &) = delete;

    /// Where clients connect to instead; 0 when it could not listen.
    quint16 port() const { return m_ownPort; }

    Traffic traffic() const;

private:
    void serve();
    void join(QTcpSocket *client, QTcpServer *parent);

    QString m_host;
    quint16 m_port;
    quint16 m_ownPort = 0;
    std::atomic<qint64> m_sent{0};
    std::atomic<qint64> m_received{0};
    std::atomic<qint64> m_roundTrips{0};
    QSemaphore m_isListening;
    QEventLoop *m_loop = nullptr;
    std::unique_ptr<QThread> m_thread;
};

} // namespace KODMS::Bench
