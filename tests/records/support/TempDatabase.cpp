// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/records/support/TempDatabase.h"

#include "services/records/SchemaMigrator.h"

namespace KODMS::Tests {

using Services::Database;
using Services::DatabaseSettings;

namespace {

/// The tables take longer to make than to copy.
const TestDatabase &installed()
{
    static TestDatabase *made = nullptr;
    if (made)
        return *made;
    made = &TestDatabase::lasting();
    Database database(made->settings(), Database::Open::Create);
    const Services::Outcome outcome = Services::SchemaMigrator(database).install();
    if (!outcome)
        qFatal("%s", qPrintable(outcome.text));
    made->freeze();
    return *made;
}

} // namespace

TempDatabase::TempDatabase() : m_place(TestDatabase::Begin::Absent)
{
    m_place.copyFrom(installed());
    m_database = std::make_unique<Database>(m_place.settings());
}

DatabaseSettings TempDatabase::settingsFor(const QString &path)
{
    DatabaseSettings settings;
    settings.driver = QStringLiteral("sqlite");
    settings.path = path;
    settings.statementTimeoutMs = 30000;
    settings.busyTimeoutMs = 5000;
    return settings;
}

} // namespace KODMS::Tests
