// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/InstallationSetup.h"
#include "tests/support/TestDatabase.h"

#include <QString>
#include <QTemporaryDir>
#include <QVector>

namespace KODMS::Tests {

/// A running sample installation of its own, gone at the end.
class SampleInstallation {
public:
    SampleInstallation();
    ~SampleInstallation();

    /// Empty: it runs.
    const QString &problem() const { return m_problem; }

    QString configPath() const;

    QString folder() const { return m_folder; }

    /// What the windows call the database.
    QString databaseName() const;

    /// Where the records are.
    const Services::DatabaseSettings &place() const { return m_database.settings(); }

    /// The account that has just this role; "" = the ordinary user.
    Services::SampleAccount account(const QString &role) const;

    /// Signs in; false when that failed.
    bool signIn(const QString &role) const;

private:
    QTemporaryDir m_dir;
    QString m_folder;
    TestDatabase m_database;
    QString m_problem;
    QVector<Services::SampleAccount> m_accounts;
};

} // namespace KODMS::Tests
