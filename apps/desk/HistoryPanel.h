// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/desk/HistoryLog.h"

#include <QDockWidget>

#include <functional>

class QHeaderView;
class QLabel;
class QPushButton;
class QTableView;
class QTimer;

namespace KODMS::Host {

/// Who did what to the selected job, and when. Reads while it is open, and again when
/// something may have changed.
class HistoryPanel : public QDockWidget {
    Q_OBJECT

public:
    /// `selected` gives the flow of the selected job; empty: the last one stays.
    HistoryPanel(std::function<QString()> selected, QWidget *parent);

    /// For remembering the columns.
    QHeaderView &header() const;

public Q_SLOTS:
    /// Reads once control is back at the event loop, however often it is called.
    void reloadSoon();
    /// The selected entries, or all, as tab-separated lines to the clipboard.
    void copy();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void buildTable();
    QWidget *makeTitleBar();
    void reload();
    void updateTitle();

    std::function<QString()> m_selected;
    QString m_flowGuid;
    QString m_unreadable; ///< refused or gone: not asked for again and again
    HistoryLog m_log;
    QTimer *m_soon = nullptr;
    QTableView *m_table = nullptr;
    QLabel *m_title = nullptr;
    QPushButton *m_older = nullptr;
    QPushButton *m_copy = nullptr;
};

} // namespace KODMS::Host
