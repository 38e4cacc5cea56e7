// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/tasks/InputBarrier.h"
#include "services/tasks/TaskProgress.h"

#include <QPointer>
#include <QTimer>

#include <memory>

namespace KODMS::Services {

class TaskDialog;

/// What people see and can do while a task runs: nobody but the progress dialog has
/// input, and that dialog shows when the task takes long. Windows may be closed or
/// deleted meanwhile.
class TaskWait final : public QObject {
    Q_OBJECT

public:
    TaskWait(const QString &what, TaskProgress &progress);
    ~TaskWait() override;

    /// The work has ended. Whoever waits in a box that was opened meanwhile gets the
    /// input back at once: without it the box could never be answered.
    void workEnded();

    /// Another task has begun, or ended, while this one waits: as long as it runs
    /// nobody gets the input back.
    void innerBegins();
    void innerEnds();

private:
    void showDialog();
    void releaseWhenDone();

    QString m_what;
    TaskProgress &m_progress;
    std::unique_ptr<InputBarrier> m_barrier;
    QPointer<QWidget> m_window; ///< had the focus when the task began
    QPointer<TaskDialog> m_dialog;
    QTimer m_showTimer;
    int m_innerTasks = 0;
    bool m_hasEnded = false;
};

} // namespace KODMS::Services
