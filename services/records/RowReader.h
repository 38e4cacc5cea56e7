// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/RecordContext.h"

#include <QVector>

#include <functional>

namespace KODMS::Services {

/// Reads rows of a view by id, a handful at a time, and hands them out in the
/// order of the ids.
class RowReader {
public:
    /// `statement` is a name of the catalogue: a query with chunkSize positional
    /// values and a column "row_id".
    RowReader(Database &database, const char *statement)
        : m_database(database), m_statement(statement)
    {
    }

    using Take = std::function<void(int, const SqlQuery &)>;

    /// Calls `take` with the place in `ids` and the query at that row. Rows that
    /// are gone are left out. Throws SqlError.
    void read(const QVector<int> &ids, const Take &take) { readAt({}, ids, take); }

    /// The same, as long as the rows are those of that moment (Dialect::tellsMoments); false
    /// when they are not.
    bool readAt(const QString &moment, const QVector<int> &ids, const Take &take);

    static constexpr int chunkSize = 30; // rows of a page

private:
    bool readSome(const QString &moment, const QVector<int> &ids, int start, const Take &take);

    Database &m_database;
    const char *m_statement;
};

} // namespace KODMS::Services
