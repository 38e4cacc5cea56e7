// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMainWindow>

namespace KODMS::Host {

class DeskTabs;
class HandOverLog;
class HandOverPanel;
class HistoryPanel;
class LiveRefresh;
class NoticeLog;
class NoticePanel;
class Preferences;

/// The host's window for one signed-in user: desks, notices, CAM side, status bar, menus.
/// A shell: what it shows and does lives in the classes that it puts together.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow(Preferences &preferences, NoticeLog &notices, HandOverLog &handOvers);

    /// True for users who may take in files.
    static bool mayTakeIn();

public Q_SLOTS:
    void openIntake(const QString &path = QString());
    void refreshDesks();
    /// All that the desk in front lists, into a file.
    void exportList();
    void showNotices();
    void showHandOvers();
    void showHistory();
    void showShortcuts();
    void showAbout();
    /// To the first search field of the desk in front.
    void startSearch();
    void sortByCurrentColumn();
    /// Brings the desk to the front, counted from 0.
    void showDesk(int number);
    void setHighContrastStatus(bool on);
    /// The desks follow the changes of others by themselves.
    void setAutomaticRefresh(bool on);
    void chooseLanguage(const QString &language);

Q_SIGNALS:
    void switchUserRequested();
    /// The window has closed; its state is stored.
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void buildCentre();
    void buildPanels(NoticeLog &notices, HandOverLog &handOvers);
    QList<QDockWidget *> panels() const;
    void openPanel(QDockWidget &panel);
    void shareRow();
    void buildStatusBar(NoticeLog &notices);
    void restorePlace();
    void rememberPlace();

    Preferences &m_preferences;
    int m_userId;
    DeskTabs *m_desks = nullptr;
    NoticePanel *m_notices = nullptr;
    HandOverPanel *m_handOvers = nullptr;
    HistoryPanel *m_history = nullptr;
    LiveRefresh *m_refresh = nullptr;
};

} // namespace KODMS::Host
