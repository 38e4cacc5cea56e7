// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/desk/DeskList.h"

#include <QPointer>
#include <QTabWidget>

#include <optional>

class QTableWidget;

namespace KODMS::UI {
class DMS_Download_Widget;
class DMS_Export_Widget;
} // namespace KODMS::UI

namespace KODMS::Host {

class DeskSearches;
class Preferences;
class StatusChipDelegate;

/// The desks of one signed-in user, one a tab, with the columns as that user left
/// them.
class DeskTabs : public QTabWidget {
    Q_OBJECT

public:
    DeskTabs(Preferences &preferences, int userId, QWidget *parent = nullptr);

    void setHighContrastStatus(bool on);

    /// Remembers the columns of every table.
    void saveColumns();

    /// What the desk in front shows, all pages of it; nothing when it has no table.
    std::optional<DeskList> list() const;

    /// The GUID of the flow of the current row of the desk in front; empty: none.
    QString currentFlow() const;

    /// The keyboard goes to the first search field of the desk in front.
    void startSearch();

    /// What a click on the title of the current cell's column does in the desk in front.
    void sortByCurrentColumn();

    /// Tells the desks that the main window closes.
    void announceClose();

Q_SIGNALS:
    /// Another job is the current one, or something may have happened to it.
    void jobChanged();

private:
    void addExportDesk();
    void addDownloadDesk();
    void buildDesks();
    void watchTable(const QTableWidget &table);
    void prepareTable(QTableWidget &table);

    Preferences &m_preferences;
    int m_userId;
    QPointer<UI::DMS_Export_Widget> m_exportDesk;
    QPointer<UI::DMS_Download_Widget> m_downloadDesk;
    StatusChipDelegate *m_chips = nullptr;
    DeskSearches *m_searches = nullptr;
};

} // namespace KODMS::Host
