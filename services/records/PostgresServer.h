// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/records/SqlError.h"

#include <QString>

class QSqlDatabase;

namespace KODMS::Services {

/// How to reach a database server, what every connection to it begins with, and what
/// a database has to be to hold records. Throws SqlError.
class PostgresServer {
public:
    explicit PostgresServer(const DatabaseSettings &settings) : m_settings(settings) {}

    static constexpr int longestConnecting = 4; ///< seconds

    /// Place, account, password and settings of a connection to the database `name`. The
    /// time to connect is in seconds; the client takes fewer than two for two.
    void configure(QSqlDatabase &connection, const QString &name,
                   int connectTimeout = longestConnecting) const;

    /// Makes the configured database when the server has none of that name.
    void makeDatabase() const;

    /// What makes a fit database of that name, on a server of that version (150000: 15.0).
    static QString creation(const QString &name, int version);

    /// Refuses a server that is too old, and a database in which texts would be
    /// compared, ordered or stored otherwise than in the embedded one.
    void check(QSqlDatabase &connection) const;

    /// For patient settings: what else a server ends connections by.
    void makePatient(QSqlDatabase &connection) const;

private:
    QString password() const;
    QString sslOptions() const;
    QString options() const;
    void makeDatabaseOn(QSqlDatabase &connection) const;
    SqlError notFit(const QString &encoding, const QString &collation, const QString &characterType,
                    const QString &provider) const;

    const DatabaseSettings &m_settings;
};

} // namespace KODMS::Services
