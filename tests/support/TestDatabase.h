// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "tests/support/ServerCopy.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace KODMS::Tests {

/// A place for records on the engine in force, gone with the object: a file, or a
/// database of the server that was started for the tests. Empty at first.
///
/// The environment chooses: KODMS_TEST_ENGINE=postgres, with KODMS_TEST_SERVER naming
/// the file that tests/postgres/server wrote; without it, the embedded engine.
class TestDatabase {
public:
    enum class Begin {
        Empty,
        Absent ///< until it becomes a copy of another
    };

    /// An embedded one is a file in a folder of its own.
    explicit TestDatabase(Begin begin = Begin::Empty);
    /// An embedded one is the file `path`, which is left to whoever owns its folder.
    explicit TestDatabase(const QString &path, Begin begin = Begin::Empty);
    ~TestDatabase();

    TestDatabase(const TestDatabase &) = delete;
    TestDatabase &operator=(const TestDatabase &) = delete;

    /// True when the engine in force is a server.
    static bool isServer();

    /// True when the server is to be had; else `why` says why not.
    static bool isEngineThere(QString *why);

    const Services::DatabaseSettings &settings() const { return m_settings; }

    /// One word that names the place to another process of the same test.
    QString place() const { return isServer() ? m_settings.name : m_settings.path; }

    static Services::DatabaseSettings settingsAt(const QString &place);

    /// The configuration's section for this place. None for the embedded engine, which
    /// by itself lies beside the configuration.
    QByteArray section() const;

    /// Points a configuration here. An embedded one stays as it is.
    void setIn(Services::Configuration &configuration) const;

    /// Chooses the place for a sample installation that will be made in `folder`. On the
    /// embedded engine nothing has to be chosen.
    void prepareSample(const QString &folder) const;

    /// Throws away what is there and becomes a copy of `other`. Nobody may be connected
    /// to either.
    void copyFrom(const TestDatabase &other);

    /// Nobody changes it any more: copies of it may be made again by putting rows back.
    void freeze() { m_isFrozen = true; }

    /// One that stays until the application ends, to be frozen and copied from.
    static TestDatabase &lasting();

    /// What a connection of a test runs first: nothing is kept over a crash of the machine.
    static QString hurry();

private:
    void remove();
    void create(const QString &from);

    void copyOnServer(const TestDatabase &other);

    std::unique_ptr<QTemporaryDir> m_dir;
    Services::DatabaseSettings m_settings;
    ServerCopy m_copy;
    bool m_isThere = false; ///< on the server
    bool m_isFrozen = false;
    bool m_isLasting = false;
};

} // namespace KODMS::Tests
