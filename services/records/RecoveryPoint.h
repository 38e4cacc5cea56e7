// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::Services {

class Database;

/// A place in a transaction from which it goes on after a statement has failed, where
/// the engine would let it do nothing more: whoever catches SqlError and tries
/// another way makes one before the first. Does nothing outside of transactions.
class RecoveryPoint {
public:
    /// Throws SqlError.
    explicit RecoveryPoint(Database &database);
    /// Goes back to this place when a statement has failed since.
    ~RecoveryPoint();

    RecoveryPoint(const RecoveryPoint &) = delete;
    RecoveryPoint &operator=(const RecoveryPoint &) = delete;

private:
    Database &m_database;
    bool m_isSet;
};

} // namespace KODMS::Services
