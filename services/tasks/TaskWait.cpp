// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tasks/TaskWait.h"

#include "services/tasks/TaskDialog.h"

#include <QApplication>

namespace KODMS::Services {

namespace {

constexpr int ShowAfterMs = 400;

}

TaskWait::TaskWait(const QString &what, TaskProgress &progress)
    : m_what(what), m_progress(progress), m_barrier(std::make_unique<InputBarrier>()),
      m_window(QApplication::activeWindow())
{
    m_showTimer.setSingleShot(true);
    connect(&m_showTimer, &QTimer::timeout, this, &TaskWait::showDialog);
    m_showTimer.start(ShowAfterMs);
}

TaskWait::~TaskWait()
{
    delete m_dialog;
}

void TaskWait::workEnded()
{
    m_hasEnded = true;
    releaseWhenDone();
}

void TaskWait::innerBegins()
{
    ++m_innerTasks;
}

void TaskWait::innerEnds()
{
    --m_innerTasks;
    releaseWhenDone();
}

void TaskWait::releaseWhenDone()
{
    if (!m_hasEnded || m_innerTasks > 0)
        return;
    m_showTimer.stop();
    if (m_dialog)
        m_dialog->hide();
    m_barrier.reset();
}

void TaskWait::showDialog()
{
    m_dialog = new TaskDialog(m_what, m_progress, m_window);
    m_barrier->letThrough(m_dialog);
    // The window that it belongs to may be deleted, and takes it along.
    connect(m_dialog, &QObject::destroyed, &m_showTimer, [this] {
        if (m_barrier)
            m_showTimer.start(0);
    });
    m_dialog->show();
}

} // namespace KODMS::Services
