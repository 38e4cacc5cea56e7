// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDockWidget>

class QAction;
class QHeaderView;
class QModelIndex;
class QPushButton;
class QTableView;

namespace KODMS::Host {

class HandOverLog;

/// The CAM side of the host: the list of what the desks handed over, with the way to
/// its folder, docked beside the notices.
class HandOverPanel : public QDockWidget {
    Q_OBJECT

public:
    HandOverPanel(HandOverLog &log, QWidget *parent);

    /// For remembering the columns.
    QHeaderView &header() const;

public Q_SLOTS:
    /// The selected hand-overs, or all, as tab-separated lines to the clipboard.
    void copy();
    /// Shows the folder of the current row.
    void openFolder();

private:
    void buildTable();
    void buildActions();
    QWidget *makeTitleBar();
    void openRow(const QModelIndex &index);
    void updateActions();

    HandOverLog &m_log;
    QTableView *m_table = nullptr;
    QAction *m_openAction = nullptr;
    QAction *m_copyAction = nullptr;
    QPushButton *m_open = nullptr;
    QPushButton *m_copy = nullptr;
};

} // namespace KODMS::Host
