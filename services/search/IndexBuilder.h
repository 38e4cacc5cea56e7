// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/IndexData.h"

#include <atomic>
#include <memory>

namespace KODMS::Services {

class Database;
class SqlQuery;

/// Reads the whole index from one state of the database.
class IndexBuilder {
public:
    /// In the thread of the database. `stop` may be set by another one.
    IndexBuilder(Database &database, const std::atomic<bool> &stop)
        : m_database(database), m_stop(stop)
    {
    }

    /// Null when it was stopped. Throws SqlError and IndexUnfit.
    std::unique_ptr<IndexData> build(int segmentRows);

    /// The people or customers of an executed query.
    static void readRecords(SqlQuery &query, IndexDictionaries::Kind kind,
                            IndexDictionaries &dictionaries);

private:
    LogPlace readLogPlace();
    void readRows(const IndexLayout &layout, IndexData &data);

    Database &m_database;
    const std::atomic<bool> &m_stop;
};

} // namespace KODMS::Services
