// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QMenu;
class QObject;
class QTableWidget;

namespace KODMS::UI {

// What the copy actions put on the clipboard: the cells' texts as the table holds
// them now, a tab between cells, a line feed after a row.

/// The selected cells of visible columns, every row of the table ending in a line
/// feed of its own only once there is text: rows without a selected cell leave no
/// blank line, but all those above the first selected cell leave one together.
QString selectedCellsText(const QTableWidget *table);

/// All cells of visible columns, joined as the selected ones are.
QString visibleCellsText(const QTableWidget *table);

/// The current column, hidden or not: one line for every row, empty where there
/// is no cell.
QString currentColumnText(const QTableWidget *table);

/// The visible cells of the current row, a tab after each and no line feed.
QString currentRowText(const QTableWidget *table);

/// Replaces what the clipboard held.
void copyToClipboard(const QString &text);

/// The menu over the table's cells: the four copy actions, connected by name to
/// the slots on__copyAct_triggered(), on__copyColumnAct_triggered(),
/// on__copyRowAct_triggered() and on__copyAllAct_triggered() of `desk`. `copy` is
/// the caption of the first. The menu belongs to the table and lives as long.
QMenu *makeCopyMenu(QTableWidget *table, const QString &copy, const QObject *desk);

/// The menu over the table's header: one action that does nothing. The menu
/// belongs to the table and lives as long.
QMenu *makeHeaderMenu(QTableWidget *table, const QString &copy);

} // namespace KODMS::UI
