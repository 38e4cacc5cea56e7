// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tasks/InputBarrier.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWindow>

namespace KODMS::Services {

namespace {

bool isUserInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::Gesture:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

} // namespace

InputBarrier::InputBarrier()
{
    QCoreApplication::instance()->installEventFilter(this);
}

InputBarrier::~InputBarrier()
{
    QCoreApplication::instance()->removeEventFilter(this);
}

bool InputBarrier::eventFilter(QObject *watched, QEvent *event)
{
    if (!isUserInput(event->type()) || isForOpenWindow(watched))
        return QObject::eventFilter(watched, event);
    event->ignore();
    return true;
}

bool InputBarrier::isForOpenWindow(QObject *watched) const
{
    if (!m_open)
        return false;
    if (watched == m_open->windowHandle())
        return true;
    const auto *widget = qobject_cast<QWidget *>(watched);
    return widget && (widget == m_open || m_open->isAncestorOf(widget));
}

} // namespace KODMS::Services
