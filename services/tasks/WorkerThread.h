// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QEventLoop>
#include <QObject>

#include <atomic>
#include <functional>

namespace KODMS::Services {

/// Does one thing on a thread of its own while the calling thread stays in an event
/// loop.
class WorkerThread final : public QObject {
    Q_OBJECT

public:
    /// Returns when `body` has returned. `hurry` is called, on the calling thread,
    /// when no event loop can run because the application quits. Throws
    /// std::system_error when there is no thread to be had.
    void run(const std::function<void()> &body, const std::function<void()> &hurry);

Q_SIGNALS:
    /// `body` has returned. run() may take longer, when somebody's box or dialog was
    /// opened meanwhile and waits for an answer.
    void ended();

private:
    /// Called by name: a queued call by name hands nothing of ours between threads.
    Q_INVOKABLE void end();

    QEventLoop m_loop;
    std::atomic<bool> m_hasEnded{false};
};

} // namespace KODMS::Services
