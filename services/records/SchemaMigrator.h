// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"
#include "services/records/SqlCatalog.h"

namespace KODMS::Services {

class Database;

/// Brings a database to the schema that this program knows. Every step is one
/// transaction: a step that fails leaves the version before it.
class SchemaMigrator {
public:
    explicit SchemaMigrator(Database &database);
    /// With scripts of the caller's choice.
    SchemaMigrator(Database &database, const SqlCatalog &catalog);

    /// Version of the open database; 0 when it is empty. Throws SqlError.
    int installedVersion();

    /// A copy of another installation was begun here and has not come to its end.
    bool isUnfinishedCopy();

    int knownVersion() const { return m_catalog.latestVersion(); }

    /// Makes the tables in an empty database; refused in any other.
    Outcome install();

    /// Upgrades an older database; does nothing to one of the known version. A
    /// newer one, an empty one and one that is not ours are refused.
    Outcome upgrade();

private:
    bool hasTables();
    void runStep(const QStringList &statements, int version);
    Outcome installChecked();
    Outcome upgradeChecked();

    Database &m_database;
    SqlCatalog m_catalog;
};

} // namespace KODMS::Services
