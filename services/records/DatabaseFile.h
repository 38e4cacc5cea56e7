// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/notices/Outcome.h"

#include <QStringList>

namespace KODMS::Services {

/// What a database in a file of its own holds, when nobody else uses it.
struct DatabaseContents {
    int schemaVersion = 0;
    qint64 flows = 0;
    QStringList storedNames; ///< of recorded files that have a body, in order
};

/// Opens the database file at `path` with the engine of `settings`, compares it
/// with its own rules and reads what it holds. Refuses a damaged one, and one of a
/// schema that this program does not know.
Result<DatabaseContents> inspectDatabaseFile(const DatabaseSettings &settings, const QString &path);

/// What people call the database that `settings` choose; not opened for it.
QString databasePlace(const DatabaseSettings &settings);

/// Whether both choose one database, as far as it can be told without opening it: by the same
/// words, or by two names of one file.
bool chooseOneDatabase(const DatabaseSettings &a, const DatabaseSettings &b);

/// Name of the database engine that `settings` choose; part of a backup.
QString databaseEngine(const DatabaseSettings &settings);

} // namespace KODMS::Services
