// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/IndexData.h"

#include <functional>
#include <memory>
#include <utility>

namespace KODMS::Services {

class Database;
class SqlQuery;

/// Reads the whole index from one state of the database.
class IndexBuilder {
public:
    /// In the thread of the database. `isStopped` is asked before each statement and row.
    IndexBuilder(Database &database, std::function<bool()> isStopped)
        : m_database(database), m_isStopped(std::move(isStopped))
    {
    }

    /// Null when it was stopped; the connection may be given up then. Throws SqlError and
    /// IndexUnfit.
    std::unique_ptr<IndexData> build(int segmentRows);

    /// The people or customers of an executed query.
    static void readRecords(SqlQuery &query, IndexDictionaries::Kind kind,
                            IndexDictionaries &dictionaries);

private:
    LogPlace readLogPlace();
    /// False when it was stopped.
    bool readAll(IndexData &data);
    bool readRecords(const char *statement, IndexDictionaries::Kind kind, IndexData &data);
    bool readRows(const IndexLayout &layout, IndexData &data);

    Database &m_database;
    std::function<bool()> m_isStopped;
};

} // namespace KODMS::Services
