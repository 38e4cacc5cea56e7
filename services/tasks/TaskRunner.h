// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"
#include "services/notices/Progress.h"

#include <QObject>

#include <functional>

namespace KODMS::Services {

/// Runs long work without freezing the windows. run() is one synchronous call:
/// where there are windows, the work runs on a thread of its own while the caller
/// waits in an event loop that takes no input except to the progress dialog;
/// elsewhere the work runs in place. For the GUI thread.
class TaskRunner final : public QObject {
    Q_OBJECT

public:
    using Work = std::function<Outcome(Progress &)>;

    static TaskRunner &instance();

    /// `what` names the work for people, translated: "取出 A1B023456.tgz". The work
    /// touches neither widgets nor the database, which belong to this thread; what
    /// it throws becomes a failure. A task started while another one waits runs in
    /// place and is cancelled with it.
    Outcome run(const QString &what, const Work &work);

    /// True while a task runs, and from its end until idle(): what would refresh
    /// tables is to be held back, since a desk may be in the middle of its rows.
    bool isBusy() const { return m_depth > 0 || m_isIdlePosted; }

Q_SIGNALS:
    /// From the event loop, once after the last of a row of tasks.
    void idle();

private:
    TaskRunner() = default;

    Outcome runInPlace(const Work &work, Progress &progress);
    Outcome runOnThread(const QString &what, const Work &work);
    void postIdle();

    int m_depth = 0;
    bool m_isIdlePosted = false;
    Progress *m_outer = nullptr; ///< of the task that waits
};

} // namespace KODMS::Services
