// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tasks/WorkerThread.h"

#include <thread>

namespace KODMS::Services {

namespace {

constexpr int CannotRun = -1;

}

void WorkerThread::run(const std::function<void()> &body, const std::function<void()> &hurry)
{
    std::thread thread([&] {
        body();
        m_hasEnded = true;
        QMetaObject::invokeMethod(this, "end", Qt::QueuedConnection);
    });
    // When the application quits, the loop ends early and cannot be entered again.
    while (!m_hasEnded) {
        if (m_loop.exec() == CannotRun) {
            hurry();
            break;
        }
    }
    thread.join();
}

void WorkerThread::end()
{
    m_loop.quit();
    Q_EMIT ended();
}

} // namespace KODMS::Services
