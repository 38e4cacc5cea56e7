// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Database.h"
#include "tests/support/TestDatabase.h"

#include <QString>

#include <memory>

namespace KODMS::Tests {

/// An installed, empty database of its own, gone with the object.
class TempDatabase {
public:
    TempDatabase();

    Services::Database &operator*() { return *m_database; }

    Services::Database *operator->() { return m_database.get(); }

    /// Hands the connection over, for example to a RecordContext.
    std::unique_ptr<Services::Database> take() { return std::move(m_database); }

    /// Settings for a second connection to the same database.
    const Services::DatabaseSettings &settings() const { return m_place.settings(); }

    /// What names the database to another process of the test.
    QString place() const { return m_place.place(); }

    /// Settings for an embedded database's file of any name.
    static Services::DatabaseSettings settingsFor(const QString &path);

private:
    TestDatabase m_place;
    std::unique_ptr<Services::Database> m_database;
};

} // namespace KODMS::Tests
