// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace KODMS::Services {

struct TableColumn {
    QString title;
    int width = 0;         ///< characters that are seen at once; 0: the reader's own choice
    bool isNumber = false; ///< whole numbers, for programs that reckon with them
};

/// Writes one table, row after row, and keeps none of them. Any thread, one at a time.
class TableWriter {
public:
    virtual ~TableWriter() = default;

    /// Once, before the first row.
    virtual Outcome begin(const QVector<TableColumn> &columns) = 0;
    /// One text a column.
    virtual Outcome addRow(const QStringList &cells) = 0;
    /// All rows are in the file, complete, when this succeeds.
    virtual Outcome finish() = 0;

    /// Cells so long that the format holds only their beginning.
    int cutCells() const { return m_cutCells; }

protected:
    int m_cutCells = 0;
};

} // namespace KODMS::Services
