// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <atomic>
#include <mutex>

namespace KODMS::Tests {

/// Stands between a client and a server on loopback, in a thread of its own, and cuts the
/// line when the client says COMMIT.
class CuttingRelay {
public:
    enum class Cut {
        Never,
        BeforeCommit, ///< the server does not hear of it
        InCommit,     ///< the server hears of it, and is still at work on it
        AfterCommit   ///< the server has answered, the client does not hear of it
    };

    CuttingRelay(const QString &host, int port);
    ~CuttingRelay();

    CuttingRelay(const CuttingRelay &) = delete;
    CuttingRelay &operator=(const CuttingRelay &) = delete;

    int port() const { return m_server->serverPort(); }

    /// For the next COMMIT; lines that are cut stay cut. With `isLast`, nobody is let in
    /// any more afterwards.
    void cutNext(Cut cut, bool isLast = false);

    void letIn() { m_isShut = false; }

    /// Whoever comes from now on is sent away at once.
    void shut() { m_isShut = true; }

    /// How often somebody came, let in or not.
    int visits() const { return m_visits; }

    bool hasCut() const { return m_cut == Cut::Never; }

    /// All that clients have said.
    QByteArray heard() const;

private:
    void take(const QString &host, int port);
    void passOn(QTcpSocket *client, QTcpSocket *server);

    mutable std::mutex m_mutex; ///< of what was heard
    QByteArray m_heard;
    std::atomic<Cut> m_cut{Cut::Never};
    std::atomic<bool> m_isLast{false};
    std::atomic<bool> m_isShut{false};
    std::atomic<int> m_visits{0};
    QThread m_thread;
    QTcpServer *m_server; ///< of the thread
};

} // namespace KODMS::Tests
