// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/InstallationSetup.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestDatabase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace KODMS::Tests {

/// An installation with one administrator in a folder of its own.
class Installation {
public:
    Installation() : m_database(path("kodms.db"))
    {
        if (TestDatabase::isServer())
            writeIni({});
        qputenv("XDG_CONFIG_HOME", path("config").toUtf8());
        qputenv("XDG_DATA_HOME", path("data").toUtf8());
        qunsetenv("KODMS_CONFIG");
    }

    ~Installation() { Services::ServiceRuntime::instance().stop(); }

    Installation(const Installation &) = delete;
    Installation &operator=(const Installation &) = delete;

    QString path(const char *name) const { return m_dir.filePath(QString::fromLatin1(name)); }

    QString iniPath() const { return path("kodms.ini"); }

    /// A configuration with these lines and the place of the records.
    void writeIni(const QByteArray &lines) const
    {
        QFile file(iniPath());
        const QByteArray text = lines + m_database.section();
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("%s cannot be written", qPrintable(iniPath()));
    }

    /// What stands in the configuration, as it is on the disk.
    QByteArray iniText() const
    {
        QFile file(iniPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    const TestDatabase &database() const { return m_database; }

    /// True when somebody has begun to make tables, or a file for them.
    bool hasRecords() const
    {
        return TestDatabase::isServer() ? !PlainConnection(place()).tables().isEmpty()
                                        : QFile::exists(path("kodms.db"));
    }

    /// As if they had been lost.
    void loseRecords() const
    {
        if (!TestDatabase::isServer()) {
            QFile::remove(path("kodms.db"));
            return;
        }
        PlainConnection(place()).run(QStringLiteral("DROP SCHEMA public CASCADE"));
        PlainConnection(place()).run(QStringLiteral("CREATE SCHEMA public"));
    }

    const Services::DatabaseSettings &place() const { return m_database.settings(); }

    /// What people are told that the database is called.
    QString databaseName() const
    {
        return TestDatabase::isServer() ? place().name : path("kodms.db");
    }

    QStringList files() const
    {
        return QDir(m_dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    Services::Outcome init() const
    {
        return Services::InstallationSetup::init(iniPath(), login(), QStringLiteral("管理员"),
                                                 password());
    }

    void initAndStart() const
    {
        const Services::Outcome made = init();
        if (!made)
            qFatal("%s", qPrintable(made.text));
        const Services::Outcome started = Services::ServiceRuntime::instance().start(iniPath());
        if (!started)
            qFatal("%s", qPrintable(started.text));
        Services::SignIn::actAsOperator();
    }

    static QString login() { return QStringLiteral("boss"); }

    static QString password() { return QStringLiteral("a long password"); }

private:
    QTemporaryDir m_dir;
    TestDatabase m_database;
};

} // namespace KODMS::Tests
