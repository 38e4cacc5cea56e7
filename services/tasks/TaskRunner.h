// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"
#include "services/notices/Progress.h"

#include <QObject>

#include <functional>

namespace KODMS::Services {

class LoopReturn;
class TaskWait;

/// Runs long work without freezing the windows. run() is one synchronous call:
/// where there are windows, the work runs on a thread of its own while the caller
/// waits in an event loop that takes no input except to the progress dialog;
/// elsewhere the work runs in place. For the GUI thread.
///
/// The first task and all that follow it until control is back at the event loop
/// from which the first was started are one action: one press on a button of a desk,
/// with all its rows, and with the boxes that it shows in between. Cancelling one
/// task ends the action.
class TaskRunner final : public QObject {
    Q_OBJECT

public:
    using Work = std::function<Outcome(Progress &)>;

    static TaskRunner &instance();

    /// `what` names the work for people, translated: "取出 A1B023456.tgz". The work
    /// touches neither widgets nor the database, which belong to this thread; what
    /// it throws becomes a failure. A failure that comes of cancelling says so, has
    /// raised the action's one notice of it, and is to be reported no further; a task
    /// that is started later in a cancelled action fails so at once. A task that is
    /// started while another one waits shares its dialog and is cancelled with it.
    Outcome run(const QString &what, const Work &work);

    /// True while a task runs, and from its end until idle(): what would refresh
    /// tables is to be held back, since a desk may be in the middle of its rows.
    bool isBusy() const { return m_outer || m_actionEnd; }

Q_SIGNALS:
    /// Once after an action, from the event loop from which it was started.
    void idle();

private:
    TaskRunner() = default;

    Outcome runInner(const Work &work);
    Outcome runInPlace(const Work &work);
    Outcome runOnThread(const QString &what, const Work &work);
    Outcome settled(const QString &what, Outcome outcome, bool isCancelled);
    void openAction();
    void endAction();

    Progress *m_outer = nullptr;       ///< of the task that runs
    TaskWait *m_wait = nullptr;        ///< of the task that runs on a thread
    LoopReturn *m_actionEnd = nullptr; ///< its last moment is still to come
    bool m_isCancelled = false;        ///< the present action
};

} // namespace KODMS::Services
