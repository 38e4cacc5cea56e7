// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDockWidget>

class QPushButton;
class QTableView;

namespace KODMS::Host {

class NoticeLog;

/// The list of notices, docked at the bottom of the main window. What it shows
/// counts as read.
class NoticePanel : public QDockWidget {
    Q_OBJECT

public:
    NoticePanel(NoticeLog &log, QWidget *parent);

public Q_SLOTS:
    /// The selected notices, or all, as tab-separated lines to the clipboard.
    void copy();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void buildTable();
    QWidget *makeTitleBar();
    void updateButtons();

    NoticeLog &m_log;
    QTableView *m_table = nullptr;
    QPushButton *m_copy = nullptr;
    QPushButton *m_clear = nullptr;
};

} // namespace KODMS::Host
