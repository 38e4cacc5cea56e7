// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QMutex>
#include <QThread>
#include <QVector>

#include <atomic>

class QTcpServer;

namespace KODMS::Tests {

/// Somebody at the other end of a robot's address: a thread that takes connections
/// on loopback, one after the other, and treats each in the same manner.
class RobotPeer : public QThread {
public:
    enum class Manner {
        NeverAnswers,
        AnswersAtOnce, ///< as soon as the request has begun to arrive
        ClosesAtOnce,
        GreetsFirst, ///< sends a line before it looks for a request
        FloodsFirst  ///< sends 10 MiB before it looks for a request
    };

    /// Listens when the constructor is done.
    explicit RobotPeer(Manner manner = Manner::NeverAnswers);
    ~RobotPeer() override;

    quint16 port() const { return m_port; }

    int connections() const { return m_connections; }

    /// What the connections that have ended sent, all together, once their number
    /// is at least `connections` (waits for that, at most ten seconds).
    QByteArray received(int connections = 1);

protected:
    void run() override;

private:
    void serve(QTcpServer &server);

    const Manner m_manner;
    std::atomic<quint16> m_port{0};
    std::atomic<int> m_connections{0};
    std::atomic<int> m_ended{0};
    std::atomic<bool> m_stop{false};
    QMutex m_mutex;
    QByteArray m_received;
};

/// A port of this machine at which nobody listens any more.
quint16 refusedPort();

/// A port of this machine that swallows connection attempts: somebody listens, and
/// the queue of those who wait is full.
class BlackHole {
public:
    BlackHole();
    ~BlackHole();

    BlackHole(const BlackHole &) = delete;
    BlackHole &operator=(const BlackHole &) = delete;

    quint16 port() const { return m_port; }

private:
    QVector<qintptr> m_handles;
    quint16 m_port = 0;
};

} // namespace KODMS::Tests
