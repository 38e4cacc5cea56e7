// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/IndexData.h"

#include <set>

namespace KODMS::Services {

class Database;
class SqlQuery;

/// Brings the index to the state that the database shows, by the log of changes.
class ChangeFollower {
public:
    enum class Result {
        UpToDate,
        TooMuch, ///< more has changed than was allowed; nothing was touched
        Lost     ///< the log says so, has lost an entry, or is of another history
    };

    ChangeFollower(Database &database, IndexData &data) : m_database(database), m_data(data) {}

    /// `most` entries at most. After Lost everything has to be read again. Throws SqlError,
    /// after which it can be tried again, and IndexUnfit, after which it cannot.
    Result follow(int most);

private:
    using Ids = std::set<std::int64_t>;

    /// What the log names.
    struct Changed {
        Ids flows;
        Ids origFiles;
        Ids customers;
        Ids people;
    };

    bool isAtHome();
    Result readLog(int most, Changed &changed, LogPlace &now);
    bool readEntry(const SqlQuery &log, Changed &changed, LogPlace &now) const;
    static bool note(int kind, std::int64_t id, Changed &changed);
    void readRecords(IndexDictionaries::Kind kind, const char *statement, const Ids &ids);
    std::vector<IndexTable::Change> readRows(const IndexLayout &layout, const Ids &ids);

    Database &m_database;
    IndexData &m_data;
};

} // namespace KODMS::Services
