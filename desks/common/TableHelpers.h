// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QTableWidget;
class QTableWidgetItem;

namespace KODMS::UI {

/// Removes every row, the last one first.
void removeAllRows(QTableWidget *table);

/// The text of a cell; empty when there is no such cell.
QString cellText(const QTableWidget *table, int row, int column);

/// Whether a cell is there and selected.
bool isCellSelected(const QTableWidget *table, int row, int column);

/// Whether any cell of the row is selected.
bool hasSelectedCell(const QTableWidget *table, int row);

/// The row in which this very item stands, however many cells have its text;
/// -1 when it stands nowhere in the table.
int rowOfItem(const QTableWidget *table, const QTableWidgetItem *item);

/// Sorts the rows of the page by `column`: ascending on the first click on a
/// column, then each time the other way round. The two states belong to the desk.
void sortByHeaderClick(QTableWidget *table, int column, int &sortColumn, int &sortDescending);

} // namespace KODMS::UI
