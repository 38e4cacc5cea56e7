// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/RoleSet.h"
#include "services/session/Runtime.h"
#include "tests/support/TestDatabase.h"

#include <QTemporaryDir>

namespace KODMS::Tests {

/// A whole installation in a folder of its own: configuration, database, file
/// store, one administrator ("admin").
class TestInstallation {
public:
    TestInstallation();
    ~TestInstallation();

    /// Starts the services, again when they ran already.
    void start();
    void stop();

    Services::Runtime &runtime();
    Services::Database &database();
    Services::FileStore &store();

    /// Signs in as a user with these roles, who is made when there is none.
    int actAs(const QString &login, const Services::RoleSet &roles);

    int actAsAdmin() { return actAs(QStringLiteral("admin"), {Services::Role::Admin}); }

    void signOut();

    QString iniPath() const;

    /// A path below the installation's own folder.
    QString path(const QString &name) const { return m_dir.filePath(name); }

    QString staging() const;
    /// Files and links in the folder, by name.
    static QStringList entries(const QString &folder);

    /// Where the records are.
    TestDatabase &place() { return m_database; }

    const TestDatabase &place() const { return m_database; }

    /// The one value that a query gives.
    QVariant value(const QString &sql);
    /// The first column of every row.
    QStringList column(const QString &sql) const;

private:
    QTemporaryDir m_dir;
    TestDatabase m_database;
};

} // namespace KODMS::Tests
