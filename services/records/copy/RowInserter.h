// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/copy/CopiedTable.h"

#include <QStringList>
#include <QVariant>
#include <QVector>

namespace KODMS::Services {

class Database;

/// Writes rows into a table as they stand, keys and all, many with one statement.
/// Throws SqlError.
class RowInserter {
public:
    RowInserter(Database &database, const CopiedTable &table, const QStringList &columns);

    void add(const QVector<QVariant> &row);

    /// Those that still wait.
    void flush();

private:
    void insert(int rows);

    Database &m_database;
    QString m_start; ///< of the statement
    QString m_marks; ///< for one row
    QVector<QVariant> m_values;
    int m_waiting = 0;
};

} // namespace KODMS::Services
