// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/MainMenu.h"

#include "apps/desk/MainWindow.h"
#include "apps/desk/Preferences.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QDockWidget>
#include <QMenu>
#include <QMenuBar>

namespace KODMS::Host {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("MainMenu", source);
}

template <typename Slot>
QAction *add(QMenu &menu, const char *objectName, const QString &caption, const QKeySequence &key,
             MainWindow &window, Slot slot)
{
    QAction *action = menu.addAction(caption);
    action->setObjectName(QLatin1String(objectName));
    action->setShortcut(key);
    QObject::connect(action, &QAction::triggered, &window, slot);
    return action;
}

void buildFileMenu(MainWindow &window)
{
    QMenu &menu = *window.menuBar()->addMenu(text(QT_TRANSLATE_NOOP("MainMenu", "文件(&F)")));
    QAction *intake =
        add(menu, "intakeAction", text(QT_TRANSLATE_NOOP("MainMenu", "接收客户文件(&N)…")),
            QKeySequence::New, window, [&window] { window.openIntake(); });
    intake->setEnabled(MainWindow::mayTakeIn());
    add(menu, "exportAction", text(QT_TRANSLATE_NOOP("MainMenu", "导出列表(&E)…")),
        QKeySequence(QStringLiteral("Ctrl+E")), window, &MainWindow::exportList);
    menu.addSeparator();
    add(menu, "switchUserAction", text(QT_TRANSLATE_NOOP("MainMenu", "切换用户(&U)…")),
        QKeySequence(QStringLiteral("Ctrl+U")), window, &MainWindow::switchUserRequested);
    add(menu, "quitAction", text(QT_TRANSLATE_NOOP("MainMenu", "退出(&Q)")),
        QKeySequence(QStringLiteral("Ctrl+Q")), window, &MainWindow::close);
}

void buildLanguageMenu(QMenu &view, MainWindow &window, const Preferences &preferences)
{
    QMenu &menu = *view.addMenu(text(QT_TRANSLATE_NOOP("MainMenu", "语言(&L)")));
    auto *group = new QActionGroup(&menu);
    const QPair<QString, QString> languages[] = {{QStringLiteral("zh"), QStringLiteral("中文")},
                                                 {QStringLiteral("en"), QStringLiteral("English")}};
    for (const auto &language : languages) {
        QAction *action = menu.addAction(language.second);
        action->setCheckable(true);
        action->setChecked(preferences.language() == language.first);
        action->setActionGroup(group);
        const QString code = language.first;
        QObject::connect(action, &QAction::triggered, &window,
                         [&window, code] { window.chooseLanguage(code); });
    }
}

void addPanel(QMenu &menu, const char *objectName, const QString &caption, Qt::Key key,
              QDockWidget &panel)
{
    QAction *toggle = panel.toggleViewAction();
    toggle->setObjectName(QLatin1String(objectName));
    toggle->setText(caption);
    toggle->setShortcut(QKeySequence(key));
    menu.addAction(toggle);
}

void buildViewMenu(MainWindow &window, const MainMenu::Panels &panels,
                   const Preferences &preferences, int userId)
{
    QMenu &menu = *window.menuBar()->addMenu(text(QT_TRANSLATE_NOOP("MainMenu", "视图(&V)")));
    add(menu, "refreshAction", text(QT_TRANSLATE_NOOP("MainMenu", "刷新(&R)")),
        QKeySequence(Qt::Key_F5), window, &MainWindow::refreshDesks);
    add(menu, "searchAction", text(QT_TRANSLATE_NOOP("MainMenu", "搜索(&S)")), QKeySequence::Find,
        window, &MainWindow::startSearch);
    add(menu, "sortAction", text(QT_TRANSLATE_NOOP("MainMenu", "按所在列排序(&O)")),
        QKeySequence(Qt::Key_F6), window, &MainWindow::sortByCurrentColumn);
    menu.addSeparator();
    add(menu, "exportDeskAction", text(QT_TRANSLATE_NOOP("MainMenu", "料号流程(&1)")),
        QKeySequence(QStringLiteral("Ctrl+1")), window, [&window] { window.showDesk(0); });
    add(menu, "downloadDeskAction", text(QT_TRANSLATE_NOOP("MainMenu", "原始文件(&2)")),
        QKeySequence(QStringLiteral("Ctrl+2")), window, [&window] { window.showDesk(1); });
    menu.addSeparator();
    addPanel(menu, "historyAction", text(QT_TRANSLATE_NOOP("MainMenu", "料号历史(&J)")), Qt::Key_F7,
             *panels.history);
    addPanel(menu, "noticesAction", text(QT_TRANSLATE_NOOP("MainMenu", "通知列表(&T)")), Qt::Key_F8,
             *panels.notices);
    addPanel(menu, "handOversAction", text(QT_TRANSLATE_NOOP("MainMenu", "CAM 交接(&C)")),
             Qt::Key_F9, *panels.handOvers);
    menu.addSeparator();
    QAction *chips = menu.addAction(text(QT_TRANSLATE_NOOP("MainMenu", "高对比度状态列(&H)")));
    chips->setObjectName(QStringLiteral("highContrastAction"));
    chips->setCheckable(true);
    chips->setChecked(preferences.highContrastStatus(userId));
    QObject::connect(chips, &QAction::toggled, &window, &MainWindow::setHighContrastStatus);
    QAction *follow = menu.addAction(text(QT_TRANSLATE_NOOP("MainMenu", "他人更改后自动刷新(&A)")));
    follow->setObjectName(QStringLiteral("automaticRefreshAction"));
    follow->setCheckable(true);
    follow->setChecked(preferences.automaticRefresh(userId));
    QObject::connect(follow, &QAction::toggled, &window, &MainWindow::setAutomaticRefresh);
    buildLanguageMenu(menu, window, preferences);
}

void buildHelpMenu(MainWindow &window)
{
    QMenu &menu = *window.menuBar()->addMenu(text(QT_TRANSLATE_NOOP("MainMenu", "帮助(&H)")));
    add(menu, "shortcutsAction", text(QT_TRANSLATE_NOOP("MainMenu", "快捷键(&K)")),
        QKeySequence(QStringLiteral("Ctrl+K")), window, &MainWindow::showShortcuts);
    add(menu, "aboutAction", text(QT_TRANSLATE_NOOP("MainMenu", "关于 KODMS(&A)")),
        QKeySequence(Qt::Key_F1), window, &MainWindow::showAbout);
}

} // namespace

void MainMenu::build(MainWindow &window, const Panels &panels, const Preferences &preferences,
                     int userId)
{
    buildFileMenu(window);
    buildViewMenu(window, panels, preferences, userId);
    buildHelpMenu(window);
}

} // namespace KODMS::Host
