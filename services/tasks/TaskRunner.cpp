// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tasks/TaskRunner.h"

#include "services/notices/NoticeHub.h"
#include "services/tasks/TaskWait.h"

#include <QApplication>
#include <QCoreApplication>
#include <QWidget>

#include <algorithm>
#include <exception>
#include <thread>

namespace KODMS::Services {

namespace {

bool hasVisibleWindows()
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return false;
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.cbegin(), windows.cend(),
                       [](const QWidget *window) { return window->isVisible(); });
}

/// For a task within another one: cancelled with it, and silent beside it.
class InnerProgress final : public Progress {
public:
    explicit InnerProgress(const Progress &outer) : m_outer(outer) {}

    void setTotal(qint64) override {}

    void advance(qint64) override {}

    bool isCancelled() const override { return m_outer.isCancelled(); }

private:
    const Progress &m_outer;
};

/// Nothing that goes wrong in the work may end the program.
Outcome guarded(const TaskRunner::Work &work, Progress &progress)
{
    try {
        return work(progress);
    } catch (const std::exception &error) {
        const QString cause = QString::fromUtf8(error.what());
        return Outcome::failure(
            QCoreApplication::translate("KODMS::Services::TaskRunner", "内部错误：%1").arg(cause),
            cause);
    }
}

} // namespace

TaskRunner &TaskRunner::instance()
{
    static TaskRunner runner;
    return runner;
}

Outcome TaskRunner::run(const QString &what, const Work &work)
{
    if (m_outer) {
        InnerProgress inner(*m_outer);
        return guarded(work, inner);
    }
    if (hasVisibleWindows())
        return runOnThread(what, work);
    NoProgress progress;
    return runInPlace(work, progress);
}

Outcome TaskRunner::runInPlace(const Work &work, Progress &progress)
{
    ++m_depth;
    m_outer = &progress;
    Outcome outcome = guarded(work, progress);
    m_outer = nullptr;
    --m_depth;
    postIdle();
    return outcome;
}

Outcome TaskRunner::runOnThread(const QString &what, const Work &work)
{
    TaskProgress progress;
    Outcome outcome;
    ++m_depth;
    m_outer = &progress;
    {
        TaskWait wait(what, progress);
        std::thread worker([&] {
            outcome = guarded(work, progress);
            wait.finish();
        });
        wait.wait();
        worker.join();
    }
    m_outer = nullptr;
    --m_depth;
    postIdle();
    return outcome;
}

/// Between the rows of one action the desk does not return to the event loop, so
/// the signal comes after the last of them.
void TaskRunner::postIdle()
{
    if (m_isIdlePosted)
        return;
    m_isIdlePosted = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isIdlePosted = false;
            if (m_depth > 0)
                return;
            Q_EMIT idle();
        },
        Qt::QueuedConnection);
}

} // namespace KODMS::Services
