// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/MainWindow.h"

#include "apps/desk/AboutBox.h"
#include "apps/desk/AccessibleNames.h"
#include "apps/desk/ChangesField.h"
#include "apps/desk/ColumnMemory.h"
#include "apps/desk/DeskTabs.h"
#include "apps/desk/HandOverPanel.h"
#include "apps/desk/HistoryPanel.h"
#include "apps/desk/IntakeDialog.h"
#include "apps/desk/LiveRefresh.h"
#include "apps/desk/MainMenu.h"
#include "apps/desk/MenuKeys.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/NoticePanel.h"
#include "apps/desk/OutageField.h"
#include "apps/desk/Preferences.h"
#include "apps/desk/SampleBanner.h"
#include "apps/desk/ShortcutsBox.h"
#include "apps/desk/StatusFields.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/LiveChanges.h"
#include "services/api/SignIn.h"

#include <QAction>
#include <QCloseEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QVBoxLayout>

namespace KODMS::Host {

namespace {

/// Another set of panels gets another number: what was remembered then does not fit.
constexpr int PanelsVersion = 2;

/// What a window manager adds around a window, title bar and all; known only when it
/// has done so.
constexpr QSize RoomForFrame(16, 48);

QString historyColumns()
{
    return QStringLiteral("history");
}

QString handOverColumns()
{
    return QStringLiteral("handOvers");
}

} // namespace

MainWindow::MainWindow(Preferences &preferences, NoticeLog &notices, HandOverLog &handOvers)
    : m_preferences(preferences), m_userId(Services::SignIn::current().id)
{
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(tr("KODMS 料号管理 - %1").arg(Services::SignIn::current().realName));
    setAcceptDrops(mayTakeIn());
    new AccessibleNames(this); // before there are controls
    Services::LiveChanges::instance().begin();
    buildCentre();
    buildPanels(notices, handOvers);
    buildStatusBar(notices);
    MainMenu::build(*this, {m_notices, m_handOvers, m_history}, m_preferences, m_userId);
    new MenuKeys(*this);
    restorePlace();
}

bool MainWindow::mayTakeIn()
{
    UI::DMS_UICommon *hub = UI::DMS_UICommon::interface();
    return hub->hasAdminRole() || hub->hasOrigFileUpdateAuthority();
}

void MainWindow::buildCentre()
{
    auto *centre = new QWidget(this);
    m_desks = new DeskTabs(m_preferences, m_userId, centre);
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(new SampleBanner(centre));
    column->addWidget(m_desks);
    setCentralWidget(centre);
    m_refresh = new LiveRefresh(*this, *m_desks, m_preferences, m_userId);
    connect(m_refresh, &LiveRefresh::refreshRequested, this, &MainWindow::refreshDesks);
}

/// Side by side and never one behind the other: a key that hides what nobody sees
/// would look dead.
void MainWindow::buildPanels(NoticeLog &notices, HandOverLog &handOvers)
{
    setDockOptions(AnimatedDocks);
    m_notices = new NoticePanel(notices, this);
    m_handOvers = new HandOverPanel(handOvers, this);
    ColumnMemory::restore(m_handOvers->header(),
                          m_preferences.columns(m_userId, handOverColumns()));
    m_history = new HistoryPanel([this] { return m_desks->currentFlow(); }, this);
    ColumnMemory::restore(m_history->header(), m_preferences.columns(m_userId, historyColumns()));
    connect(m_desks, &DeskTabs::jobChanged, m_history, &HistoryPanel::reloadSoon);
    addDockWidget(Qt::BottomDockWidgetArea, m_notices);
    splitDockWidget(m_notices, m_handOvers, Qt::Horizontal);
    splitDockWidget(m_handOvers, m_history, Qt::Horizontal);
    resizeDocks({m_notices}, {190}, Qt::Vertical);
    for (QDockWidget *panel : panels()) {
        panel->hide();
        connect(panel->toggleViewAction(), &QAction::triggered, this, &MainWindow::shareRow);
    }
}

/// A panel that opens beside the other one would get what its column titles need.
void MainWindow::shareRow()
{
    QList<QDockWidget *> row;
    QList<int> shares;
    for (QDockWidget *panel : panels()) {
        const bool besideOthers =
            row.isEmpty() || (dockWidgetArea(panel) == dockWidgetArea(row.first()) &&
                              panel->y() == row.first()->y());
        if (!panel->isVisible() || !besideOthers)
            continue;
        row << panel;
        shares << (panel == m_notices ? 2 : 3);
    }
    if (row.size() > 1)
        resizeDocks(row, shares, Qt::Horizontal);
}

QList<QDockWidget *> MainWindow::panels() const
{
    return {m_notices, m_handOvers, m_history};
}

void MainWindow::openPanel(QDockWidget &panel)
{
    if (!panel.isVisible()) {
        panel.show();
        shareRow();
    }
    panel.raise();
}

void MainWindow::buildStatusBar(NoticeLog &notices)
{
    statusBar()->addPermanentWidget(new OutageField(statusBar()));
    auto *changes = new ChangesField(statusBar());
    statusBar()->addPermanentWidget(changes);
    connect(changes, &ChangesField::clicked, this, &MainWindow::refreshDesks);
    auto *fields = new StatusFields(*statusBar(), notices);
    connect(fields, &StatusFields::noticesRequested, this, &MainWindow::showNotices);
}

void MainWindow::restorePlace()
{
    const QSize room = screen()->availableSize();
    resize(QSize(1360, 900).boundedTo(room - RoomForFrame));
    restoreGeometry(m_preferences.windowGeometry(m_userId));
    restoreState(m_preferences.panels(m_userId), PanelsVersion);
}

void MainWindow::rememberPlace()
{
    m_desks->saveColumns();
    m_preferences.setColumns(m_userId, handOverColumns(),
                             ColumnMemory::save(m_handOvers->header()));
    m_preferences.setColumns(m_userId, historyColumns(), ColumnMemory::save(m_history->header()));
    m_preferences.setWindowGeometry(m_userId, saveGeometry());
    m_preferences.setPanels(m_userId, saveState(PanelsVersion));
}

void MainWindow::openIntake(const QString &path)
{
    IntakeDialog dialog(this);
    if (!path.isEmpty())
        dialog.choosePath(path);
    dialog.exec();
}

void MainWindow::refreshDesks()
{
    UI::DMS_UICommon::interface()->emitGobalSingal();
}

void MainWindow::exportList()
{
    if (const auto list = m_desks->list())
        list->saveAs(this);
}

void MainWindow::showNotices()
{
    openPanel(*m_notices);
}

void MainWindow::showHandOvers()
{
    openPanel(*m_handOvers);
}

void MainWindow::showHistory()
{
    openPanel(*m_history);
}

void MainWindow::showShortcuts()
{
    ShortcutsBox box(*this);
    box.exec();
}

void MainWindow::startSearch()
{
    m_desks->startSearch();
}

void MainWindow::sortByCurrentColumn()
{
    m_desks->sortByCurrentColumn();
}

void MainWindow::showDesk(int number)
{
    m_desks->setCurrentIndex(number);
    m_desks->startSearch();
}

void MainWindow::showAbout()
{
    AboutBox box(this);
    box.exec();
}

void MainWindow::setHighContrastStatus(bool on)
{
    m_desks->setHighContrastStatus(on);
}

void MainWindow::setAutomaticRefresh(bool on)
{
    m_refresh->setAutomatic(on);
}

void MainWindow::chooseLanguage(const QString &language)
{
    if (language == m_preferences.language())
        return;
    m_preferences.setLanguage(language);
    QMessageBox::information(this, tr("语言"), tr("下次启动时使用所选的语言。"));
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    m_desks->announceClose();
    rememberPlace();
    event->accept();
    Q_EMIT closed();
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() != 1 || !urls.first().isLocalFile())
        return;
    event->setDropAction(Qt::CopyAction); // never a move: the file stays its owner's
    event->accept();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    const QString path = event->mimeData()->urls().value(0).toLocalFile();
    event->setDropAction(Qt::CopyAction); // never a move: the file stays its owner's
    event->accept();
    // The source of the drag waits for this event to return: the dialog opens after it.
    QMetaObject::invokeMethod(
        this, [this, path] { openIntake(path); }, Qt::QueuedConnection);
}

} // namespace KODMS::Host
