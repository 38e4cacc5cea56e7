// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/IndexData.h"

#include <set>

namespace KODMS::Services {

class Database;

/// Brings the index to the state that the database shows, by the log of changes.
class ChangeFollower {
public:
    ChangeFollower(Database &database, IndexData &data) : m_database(database), m_data(data) {}

    /// False when everything has to be read again: the log says so, or has lost an entry,
    /// or has more than are worth reading one by one. Throws SqlError and IndexUnfit;
    /// the index is of no use then, nor after false.
    bool follow();

    /// So many changed rows are read one by one.
    static constexpr int mostChanges = 2000;

private:
    using Ids = std::set<std::int64_t>;

    /// What the log names.
    struct Changed {
        Ids flows;
        Ids origFiles;
        Ids customers;
        Ids people;
    };

    bool readLog(Changed &changed, std::int64_t &last);
    static bool note(int kind, std::int64_t id, Changed &changed);
    void readRecords(IndexDictionaries::Kind kind, const char *statement, const Ids &ids);
    std::vector<IndexTable::Change> readRows(const IndexLayout &layout, const Ids &ids);

    Database &m_database;
    IndexData &m_data;
};

} // namespace KODMS::Services
