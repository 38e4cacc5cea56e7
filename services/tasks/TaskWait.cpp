// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tasks/TaskWait.h"

#include "services/tasks/TaskDialog.h"

#include <QApplication>

namespace KODMS::Services {

namespace {

constexpr int ShowAfterMs = 400;
constexpr int CannotRun = -1;

} // namespace

TaskWait::TaskWait(const QString &what, TaskProgress &progress)
    : m_what(what), m_progress(progress), m_window(QApplication::activeWindow())
{
    m_showTimer.setSingleShot(true);
    connect(&m_showTimer, &QTimer::timeout, this, &TaskWait::showDialog);
}

TaskWait::~TaskWait()
{
    delete m_dialog;
}

void TaskWait::wait()
{
    m_showTimer.start(ShowAfterMs);
    // When the application quits, the loop ends early and cannot be entered again.
    while (!m_isFinished) {
        if (m_loop.exec() == CannotRun) {
            m_progress.cancel();
            return;
        }
    }
}

void TaskWait::finish()
{
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isFinished = true;
            m_loop.quit();
        },
        Qt::QueuedConnection);
}

void TaskWait::showDialog()
{
    m_dialog = new TaskDialog(m_what, m_progress, m_window);
    m_barrier.letThrough(m_dialog);
    m_dialog->show();
}

} // namespace KODMS::Services
