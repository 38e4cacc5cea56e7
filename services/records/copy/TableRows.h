// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/SqlQuery.h"
#include "services/records/copy/CopiedTable.h"

#include <QStringList>

namespace KODMS::Services {

class Database;

/// Reads a table from end to end in the order of its key, some thousand rows at a time:
/// an engine may hold all of a result in memory. Throws SqlError.
class TableRows {
public:
    TableRows(Database &database, const CopiedTable &table, const QStringList &columns);

    /// False after the last row.
    bool next();

    const QVector<QVariant> &values() const { return m_values; }

    /// Those of the table, in the order of their names.
    static QStringList columnsOf(Database &database, const CopiedTable &table);

private:
    bool isPaged() const { return m_keyPlace >= 0; }

    static constexpr int page = 2000;

    SqlQuery m_query;
    QStringList m_columns;
    int m_keyPlace;
    qint64 m_lastKey = 0;
    int m_read = 0; ///< of this page
    QVector<QVariant> m_values;
};

} // namespace KODMS::Services
