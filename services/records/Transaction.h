// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Services {

class Database;
class WriteListener;

/// Several statements as one change, or several reads of one state. Rolls back in
/// its destructor unless commit() was called. Inside another transaction it is a
/// part of that one which can be rolled back on its own. Throws SqlError.
class Transaction {
public:
    enum class Purpose {
        Write, ///< waits for other writers before it starts
        Read
    };

    explicit Transaction(Database &database, Purpose purpose = Purpose::Write);
    ~Transaction();

    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    /// When it returns, the outermost transaction's change is on the disk. Of a connection
    /// that is lost meanwhile, the server is asked what has become of the change; when it
    /// cannot be asked, this throws SqlError::Kind::Unsure.
    void commit();

private:
    void begin(bool writes);
    void commitOutermost();
    bool isSavedAllTheSame();
    QString fate();
    WriteListener *listener() const;
    void tellBegin();
    void rollBack();

    Database &m_database;
    int m_depth;
    bool m_isOpen = false;
};

} // namespace KODMS::Services
