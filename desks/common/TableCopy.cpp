// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/TableCopy.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QTableWidget>

namespace KODMS::UI {

namespace {

constexpr char CopyColumn[] = "复制当前列";
constexpr char CopyRow[] = "复制当前行";
constexpr char CopyAll[] = "复制所有";

constexpr QLatin1Char Tab('\t');
constexpr QLatin1Char LineFeed('\n');

/// The cell of a visible column; null when there is none.
const QTableWidgetItem *visibleCell(const QTableWidget *table, int row, int column)
{
    return table->isColumnHidden(column) ? nullptr : table->item(row, column);
}

/// The end of a row takes back the last tab; after a row that gave nothing it
/// takes back, and renews, the line feed of the row before.
template <typename Wanted> QString joinCells(const QTableWidget *table, Wanted isWanted)
{
    QString text;
    for (int row = 0; row < table->rowCount(); ++row) {
        for (int column = 0; column < table->columnCount(); ++column) {
            const QTableWidgetItem *cell = visibleCell(table, row, column);
            if (cell && isWanted(cell))
                text += cell->text() + Tab;
        }
        text.chop(1);
        text += LineFeed;
    }
    return text;
}

} // namespace

QString selectedCellsText(const QTableWidget *table)
{
    return joinCells(table, [](const QTableWidgetItem *cell) { return cell->isSelected(); });
}

QString visibleCellsText(const QTableWidget *table)
{
    return joinCells(table, [](const QTableWidgetItem *) { return true; });
}

QString currentColumnText(const QTableWidget *table)
{
    QString text;
    for (int row = 0; row < table->rowCount(); ++row) {
        if (const QTableWidgetItem *cell = table->item(row, table->currentColumn()))
            text += cell->text();
        text += LineFeed;
    }
    return text;
}

QString currentRowText(const QTableWidget *table)
{
    QString text;
    for (int column = 0; column < table->columnCount(); ++column)
        if (const QTableWidgetItem *cell = visibleCell(table, table->currentRow(), column))
            text += cell->text() + Tab;
    return text;
}

void copyToClipboard(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

QMenu *makeCopyMenu(QTableWidget *table, const QString &copy, const QObject *desk)
{
    auto *menu = new QMenu(table);

    const struct {
        QAction *action;
        const char *slot;
    } actions[] = {
        {menu->addAction(copy), SLOT(on__copyAct_triggered())},
        {menu->addAction(QString::fromUtf8(CopyColumn)), SLOT(on__copyColumnAct_triggered())},
        {menu->addAction(QString::fromUtf8(CopyRow)), SLOT(on__copyRowAct_triggered())},
        {menu->addAction(QString::fromUtf8(CopyAll)), SLOT(on__copyAllAct_triggered())},
    };

    for (const auto &entry : actions)
        QObject::connect(entry.action, SIGNAL(triggered(bool)), desk, entry.slot);
    return menu;
}

QMenu *makeHeaderMenu(QTableWidget *table, const QString &copy)
{
    auto *menu = new QMenu(table);
    menu->addAction(copy);
    return menu;
}

} // namespace KODMS::UI
