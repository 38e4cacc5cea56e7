// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/TableCopyText.h"

#include <QAbstractItemView>

#include <algorithm>

namespace KODMS::Host {

QString tableCopyText(const QAbstractItemView &view)
{
    const QAbstractItemModel &model = *view.model();
    QModelIndexList rows = view.selectionModel()->selectedRows();
    if (rows.isEmpty()) {
        for (int row = 0; row < model.rowCount(); ++row)
            rows << model.index(row, 0);
    }
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex &row : qAsConst(rows)) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells << row.sibling(row.row(), column).data().toString();
        lines << cells.join(QLatin1Char('\t'));
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace KODMS::Host
