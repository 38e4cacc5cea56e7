// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/ShortcutsBox.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

namespace KODMS::Host {

namespace {

using Key = QPair<QString, QString>;

/// Without the letter of the menu and the dots of a dialog.
QString plainCaption(QString caption)
{
    static const QRegularExpression letter(QStringLiteral("\\(&.\\)|&|…$|\\.\\.\\.$"));
    return caption.remove(letter).trimmed();
}

/// Menu by menu, then what has its key elsewhere.
QList<QAction *> inOrder(const QWidget &window)
{
    QList<QAction *> actions;
    if (const auto *bar = window.findChild<QMenuBar *>()) {
        const auto menus = bar->actions();
        for (const QAction *menu : menus) {
            if (menu->menu())
                actions += menu->menu()->actions();
        }
    }
    return actions + window.findChildren<QAction *>();
}

QVector<Key> keysOfTables()
{
    return {{ShortcutsBox::tr("列出所选料号的问题"), ShortcutsBox::tr("表格中按回车")},
            {ShortcutsBox::tr("修改备注"), ShortcutsBox::tr("表格中按 F2")},
            {ShortcutsBox::tr("右键菜单（复制）"), ShortcutsBox::tr("表格中按菜单键")},
            {ShortcutsBox::tr("下一个、上一个控件"), QStringLiteral("Tab, Shift+Tab")}};
}

} // namespace

QVector<QPair<QString, QString>> ShortcutsBox::keysOf(const QWidget &window)
{
    QVector<Key> keys;
    const QList<QAction *> actions = inOrder(window);
    for (const QAction *action : actions) {
        if (action->shortcut().isEmpty() || action->text().isEmpty())
            continue;
        const Key key(plainCaption(action->text()),
                      action->shortcut().toString(QKeySequence::NativeText));
        if (!keys.contains(key))
            keys << key;
    }
    return keys;
}

ShortcutsBox::ShortcutsBox(QWidget &window) : QDialog(&window)
{
    setObjectName(QStringLiteral("shortcutsBox"));
    setWindowTitle(tr("快捷键"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    auto *form = new QFormLayout;
    form->setHorizontalSpacing(36);
    form->setVerticalSpacing(8);
    const QVector<Key> all = keysOf(window) + keysOfTables();
    for (const Key &key : all) {
        auto *name = new QLabel(key.second, this);
        name->setObjectName(QStringLiteral("note"));
        form->addRow(new QLabel(key.first, this), name);
    }
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 16);
    column->setSpacing(16);
    column->addLayout(form);
    column->addWidget(buttons);
    buttons->button(QDialogButtonBox::Close)->setFocus();
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

} // namespace KODMS::Host
