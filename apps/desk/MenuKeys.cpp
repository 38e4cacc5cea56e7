// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/MenuKeys.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>

namespace KODMS::Host {

MenuKeys::MenuKeys(QMainWindow &window) : QObject(&window), m_window(window)
{
    qApp->installEventFilter(this);
}

/// A field asks for a key before any menu sees it; one that is not asked does not take it.
bool MenuKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return false;
    const auto *widget = qobject_cast<QWidget *>(watched);
    if (!widget || widget->window() != &m_window || !isOfMenu(static_cast<QKeyEvent &>(*event)))
        return false;
    event->ignore();
    return true;
}

bool MenuKeys::isOfMenu(const QKeyEvent &key) const
{
    const int modifiers = static_cast<int>(key.modifiers() & ~Qt::KeypadModifier);
    const QKeySequence keys(modifiers | key.key());
    const auto menus = m_window.menuBar()->findChildren<QMenu *>();
    return std::any_of(menus.cbegin(), menus.cend(), [&keys](const QMenu *menu) {
        const auto actions = menu->actions();
        return std::any_of(actions.cbegin(), actions.cend(), [&keys](const QAction *action) {
            return action->isEnabled() && action->shortcuts().contains(keys);
        });
    });
}

} // namespace KODMS::Host
