// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

class QKeyEvent;
class QMainWindow;

namespace KODMS::Host {

/// Keeps the keys of a window's menus for the menus. On some platforms an input field
/// takes a few of them for itself: Ctrl+E is the end of the line, Ctrl+U empties the field.
class MenuKeys final : public QObject {
public:
    /// Belongs to the window.
    explicit MenuKeys(QMainWindow &window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isOfMenu(const QKeyEvent &key) const;

    QMainWindow &m_window;
};

} // namespace KODMS::Host
