// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/FirstPaint.h"

#include <QEvent>
#include <QWidget>

#include <utility>

namespace KODMS::Host {

FirstPaint::FirstPaint(QWidget &window, std::function<void()> action)
    : QObject(&window), m_action(std::move(action))
{
    window.installEventFilter(this);
}

void FirstPaint::after(QWidget &window, std::function<void()> action)
{
    new FirstPaint(window, std::move(action)); // owned by the window
}

bool FirstPaint::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        QMetaObject::invokeMethod(this, m_action, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace KODMS::Host
