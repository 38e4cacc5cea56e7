// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/TableHelpers.h"

#include <QTableWidget>

namespace KODMS::UI {

void removeAllRows(QTableWidget *table)
{
    for (int row = table->rowCount() - 1; row >= 0; --row)
        table->removeRow(row);
}

QString cellText(const QTableWidget *table, int row, int column)
{
    const QTableWidgetItem *item = table->item(row, column);
    return item ? item->text() : QString();
}

bool isCellSelected(const QTableWidget *table, int row, int column)
{
    const QTableWidgetItem *item = table->item(row, column);
    return item && item->isSelected();
}

bool hasSelectedCell(const QTableWidget *table, int row)
{
    for (int column = 0; column < table->columnCount(); ++column)
        if (isCellSelected(table, row, column))
            return true;
    return false;
}

int rowOfItem(const QTableWidget *table, const QTableWidgetItem *item)
{
    for (int row = 0; row < table->rowCount(); ++row)
        for (int column = 0; column < table->columnCount(); ++column)
            if (table->item(row, column) == item)
                return row;
    return -1;
}

void sortByHeaderClick(QTableWidget *table, int column, int &sortColumn, int &sortDescending)
{
    if (column != sortColumn) {
        sortDescending = 0;
        sortColumn = column;
    }
    table->sortItems(column, sortDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
    sortDescending = !sortDescending;
}

} // namespace KODMS::UI
