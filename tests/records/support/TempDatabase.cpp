// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/records/support/TempDatabase.h"

#include "services/records/SchemaMigrator.h"

namespace KODMS::Tests {

using Services::Database;
using Services::DatabaseSettings;

TempDatabase::TempDatabase()
    : m_settings(settingsFor(m_dir.filePath(QStringLiteral("records.db")))),
      m_database(std::make_unique<Database>(m_settings, Database::Open::Create))
{
    const Services::Outcome outcome = Services::SchemaMigrator(*m_database).install();
    if (!outcome)
        qFatal("%s", qPrintable(outcome.text));
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
