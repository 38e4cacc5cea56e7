// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/PlainConnection.h"

namespace KODMS::Tests {

/// A keeper of the server who lets nobody be idle in this database: for connections that are
/// made from now on, until the object goes.
class ServersImpatience {
public:
    static constexpr int Milliseconds = 200; ///< within a transaction

    explicit ServersImpatience(const Services::DatabaseSettings &settings)
        : m_database(QStringLiteral("ALTER DATABASE \"%1\" ").arg(settings.name)), m_plain(settings)
    {
        set(QStringLiteral("idle_in_transaction_session_timeout"), Milliseconds);
        const QStringList others = m_plain.texts(
            QStringLiteral("SELECT name FROM pg_settings "
                           "WHERE name IN ('idle_session_timeout', 'transaction_timeout')"));
        for (const QString &name : others)
            set(name, 60000); // not over before a connection has been set up
    }

    ~ServersImpatience() { m_plain.run(m_database + QStringLiteral("RESET ALL")); }

    ServersImpatience(const ServersImpatience &) = delete;
    ServersImpatience &operator=(const ServersImpatience &) = delete;

private:
    void set(const QString &name, int milliseconds) const
    {
        m_plain.run(m_database + QStringLiteral("SET %1 = %2").arg(name).arg(milliseconds));
    }

    QString m_database;
    PlainConnection m_plain;
};

} // namespace KODMS::Tests
