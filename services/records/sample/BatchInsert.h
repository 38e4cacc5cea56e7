// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/SqlQuery.h"

#include <QString>
#include <QVariant>
#include <QVector>

namespace KODMS::Services {

class Database;

/// Inserts rows into one table, on a server many at a time: each statement is a journey
/// there and back. Rows that were added are in the table after flush(). Throws SqlError.
class BatchInsert {
public:
    /// `columns`: their names, with commas between.
    BatchInsert(Database &database, const char *table, const char *columns);

    void add(const QVector<QVariant> &values);
    void flush();

private:
    QString statement(int rows) const;
    void run(SqlQuery &query);

    Database &m_database;
    QString m_table;
    QString m_columns;
    int m_batch; ///< rows of a statement
    SqlQuery m_insert;
    QVector<QVariant> m_values; ///< of the rows that wait
};

} // namespace KODMS::Services
