// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/tasks/InputBarrier.h"
#include "services/tasks/TaskProgress.h"

#include <QEventLoop>
#include <QPointer>
#include <QTimer>

namespace KODMS::Services {

class TaskDialog;

/// The GUI thread's side of one task: keeps the windows painted, lets nobody but
/// the progress dialog have input, and shows that dialog when the task takes long.
/// Windows may be closed or deleted meanwhile.
class TaskWait final : public QObject {
    Q_OBJECT

public:
    TaskWait(const QString &what, TaskProgress &progress);
    ~TaskWait() override;

    /// Returns once finish() was called; or, when the application quits, at once
    /// with the task cancelled.
    void wait();
    /// Any thread.
    void finish();

private:
    void showDialog();

    QString m_what;
    TaskProgress &m_progress;
    InputBarrier m_barrier;
    QPointer<QWidget> m_window; ///< had the focus when the task began
    QPointer<TaskDialog> m_dialog;
    QEventLoop m_loop;
    QTimer m_showTimer;
    bool m_isFinished = false;
};

} // namespace KODMS::Services
