// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tasks/TaskRunner.h"

#include "services/notices/NoticeHub.h"
#include "services/notices/OneLine.h"
#include "services/tasks/LoopReturn.h"
#include "services/tasks/TaskProgress.h"
#include "services/tasks/TaskWait.h"
#include "services/tasks/WorkerThread.h"

#include <QApplication>
#include <QCoreApplication>
#include <QThread>
#include <QWidget>

#include <algorithm>
#include <exception>
#include <system_error>

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

Outcome innerFailure(const std::exception &error)
{
    const QString cause = QString::fromUtf8(error.what());
    return Outcome::failure(
        QCoreApplication::translate("KODMS::Services::TaskRunner", "内部错误：%1").arg(cause),
        cause);
}

/// Nothing that goes wrong in the work may end the program.
Outcome guarded(const TaskRunner::Work &work, Progress &progress)
{
    try {
        return work(progress);
    } catch (const std::exception &error) {
        return innerFailure(error);
    }
}

Outcome cancelledOutcome()
{
    Outcome outcome =
        Outcome::failure(QCoreApplication::translate("KODMS::Services::TaskRunner", "已取消"),
                         QStringLiteral("cancelled"));
    outcome.isCancelled = true;
    return outcome;
}

Outcome onThread(WorkerThread &worker, const TaskRunner::Work &work, Progress &progress,
                 const std::function<void()> &hurry)
{
    Outcome outcome;
    try {
        worker.run([&] { outcome = guarded(work, progress); }, hurry);
    } catch (const std::system_error &error) {
        outcome = innerFailure(error);
    }
    return outcome;
}

} // namespace

TaskRunner &TaskRunner::instance()
{
    static TaskRunner runner;
    return runner;
}

Outcome TaskRunner::run(const QString &what, const Work &work)
{
    if (m_outer)
        return runInner(work);
    openAction();
    if (m_isCancelled)
        return cancelledOutcome();
    const Outcome outcome = hasVisibleWindows() ? runOnThread(what, work) : runInPlace(work);
    openAction(); // where no event loop ran yet, the wait was the first one
    return outcome;
}

Outcome TaskRunner::runInPlace(const Work &work)
{
    NoProgress progress;
    m_outer = &progress;
    Outcome outcome = guarded(work, progress);
    m_outer = nullptr;
    return outcome;
}

Outcome TaskRunner::runOnThread(const QString &what, const Work &work)
{
    TaskProgress progress;
    Outcome outcome;
    {
        TaskWait wait(what, progress);
        WorkerThread worker;
        connect(&worker, &WorkerThread::ended, &wait, &TaskWait::workEnded);
        m_outer = &progress;
        m_wait = &wait;
        outcome = onThread(worker, work, progress, [&] { progress.cancel(); });
        m_wait = nullptr;
        m_outer = nullptr;
    }
    return settled(what, outcome, progress.isCancelled());
}

/// From the work itself, or from something that the event loop of the wait let act.
Outcome TaskRunner::runInner(const Work &work)
{
    InnerProgress inner(*m_outer);
    if (QThread::currentThread() != thread() || !m_wait)
        return guarded(work, inner);
    WorkerThread worker;
    m_wait->innerBegins();
    Outcome outcome = onThread(worker, work, inner, [] {});
    m_wait->innerEnds();
    outcome.isCancelled = !outcome && inner.isCancelled();
    return outcome;
}

Outcome TaskRunner::settled(const QString &what, Outcome outcome, bool isCancelled)
{
    if (!isCancelled)
        return outcome;
    m_isCancelled = true;
    outcome.isCancelled = !outcome;
    qCInfo(lcTasks).noquote() << "cancelled:" << oneLine(what);
    NoticeHub::instance().raise(NoticeLevel::Information,
                                tr("已取消：%1。本次操作的其余部分不再进行。").arg(what));
    return outcome;
}

void TaskRunner::openAction()
{
    if (!m_actionEnd)
        m_actionEnd = new LoopReturn([this] { endAction(); });
}

void TaskRunner::endAction()
{
    m_actionEnd = nullptr;
    if (m_outer)
        return; // run() opens it again
    m_isCancelled = false;
    Q_EMIT idle();
}

} // namespace KODMS::Services
