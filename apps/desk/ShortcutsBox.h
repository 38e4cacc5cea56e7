// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QPair>
#include <QVector>

namespace KODMS::Host {

/// Lists every key of the main window, as its actions have them, and the keys of the
/// desks' tables.
class ShortcutsBox : public QDialog {
    Q_OBJECT

public:
    explicit ShortcutsBox(QWidget &window);

    /// What a key does, and the key, in the order of the menus.
    static QVector<QPair<QString, QString>> keysOf(const QWidget &window);
};

} // namespace KODMS::Host
