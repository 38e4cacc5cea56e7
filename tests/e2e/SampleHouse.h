// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/InstallationSetup.h"
#include "services/api/UserAdmin.h"
#include "tests/e2e/RecordProbe.h"
#include "tests/support/TestDatabase.h"

#include <QTemporaryDir>
#include <QVector>

#include <memory>

namespace KODMS::Tests {

/// A sample installation with its people and flows, opened; gone with the object.
/// One at a time.
class SampleHouse {
public:
    /// The same number of flows gives the same records. A failure ends the process.
    explicit SampleHouse(int flows);
    ~SampleHouse();

    SampleHouse(const SampleHouse &) = delete;
    SampleHouse &operator=(const SampleHouse &) = delete;

    /// Signs an account of the sample in, by its login name; returns the user's id.
    int signIn(const QString &login) const;

    /// Adds an account, as whoever runs the installation does.
    void addAccount(const Services::NewUser &user);

    /// The password of an account of the sample or of addAccount().
    QString password(const QString &login) const;

    QString configPath() const { return m_config; }

    /// The download folder of the configuration, as it stands there.
    QString downloadFolder() const;

    /// Closes the services, writes into the configuration where the robot listens on
    /// this machine, and opens them again. Nobody is signed in then.
    void moveRobotTo(quint16 port) const;

    const RecordProbe &records() const { return *m_records; }

    /// Where the records are.
    const Services::DatabaseSettings &place() const { return m_database.settings(); }

private:
    QTemporaryDir m_dir;
    QString m_folder;
    TestDatabase m_database;
    QString m_config;
    std::unique_ptr<RecordProbe> m_records;
    QVector<Services::SampleAccount> m_accounts;
};

} // namespace KODMS::Tests
