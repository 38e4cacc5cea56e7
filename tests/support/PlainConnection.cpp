// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/PlainConnection.h"

#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QThread>
#include <QUuid>
#include <QVariant>

#include <algorithm>

namespace KODMS::Tests {

namespace {

QString wordIn(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(path));
    return QString::fromUtf8(file.readAll()).trimmed();
}

QSqlDatabase added(const Services::DatabaseSettings &settings, const QString &name)
{
    if (settings.driver != QLatin1String("postgres")) {
        auto file = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        file.setDatabaseName(settings.path);
        return file;
    }
    auto server = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
    server.setHostName(settings.host);
    server.setPort(settings.port);
    server.setDatabaseName(settings.name);
    server.setUserName(settings.user);
    server.setPassword(wordIn(settings.passwordFile));
    server.setConnectOptions(QStringLiteral("connect_timeout=30"));
    return server;
}

QSqlQuery executed(const QSqlDatabase &database, const QString &statement)
{
    QSqlQuery query(database);
    if (!query.exec(statement))
        qFatal("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
    return query;
}

} // namespace

PlainConnection::PlainConnection(const Services::DatabaseSettings &settings)
    : m_name(QUuid::createUuid().toString())
{
    QSqlDatabase database = added(settings, m_name);
    if (!database.open())
        qFatal("%s", qPrintable(database.lastError().text()));
}

PlainConnection::~PlainConnection()
{
    database().close();
    QSqlDatabase::removeDatabase(m_name);
}

void PlainConnection::run(const QString &statement) const
{
    executed(database(), statement);
}

bool PlainConnection::isServer() const
{
    return database().driverName() == QLatin1String("QPSQL");
}

void PlainConnection::refuse(const QString &change, const QString &text, const QString &when) const
{
    QString trigger = QStringLiteral("CREATE TRIGGER refusal BEFORE %1 FOR EACH ROW ").arg(change);
    if (!when.isEmpty())
        trigger += QStringLiteral("WHEN (%1) ").arg(when);
    if (!isServer())
        return run(trigger + QStringLiteral("BEGIN SELECT RAISE(ABORT, '%1'); END").arg(text));
    run(QStringLiteral("CREATE OR REPLACE FUNCTION refuse_it() RETURNS trigger LANGUAGE plpgsql AS "
                       "$$ BEGIN RAISE EXCEPTION '%1'; END $$")
            .arg(text));
    run(trigger + QStringLiteral("EXECUTE FUNCTION refuse_it()"));
}

void PlainConnection::allow(const QString &change) const
{
    const QString table = change.section(QLatin1Char(' '), -1);
    run(isServer() ? QStringLiteral("DROP TRIGGER refusal ON ") + table
                   : QStringLiteral("DROP TRIGGER refusal"));
}

void PlainConnection::ignoreReferences() const
{
    run(isServer() ? QStringLiteral("SET session_replication_role = replica")
                   : QStringLiteral("PRAGMA foreign_keys = OFF"));
}

QStringList PlainConnection::texts(const QString &statement) const
{
    QSqlQuery query = executed(database(), statement);
    QStringList texts;
    while (query.next())
        texts << query.value(0).toString();
    return texts;
}

QStringList PlainConnection::sortedRows(const QString &statement) const
{
    QSqlQuery query = executed(database(), statement);
    QStringList rows;
    while (query.next()) {
        const QSqlRecord row = query.record();
        QStringList cells;
        for (int i = 0; i < row.count(); ++i)
            cells << (row.isNull(i) ? QStringLiteral("null")
                                    : QLatin1Char('\'') + row.value(i).toString());
        rows << cells.join(QLatin1Char('|'));
    }
    rows.sort();
    return rows;
}

void PlainConnection::awaitWaitingWriter() const
{
    constexpr int mostLooks = 1000;
    constexpr int pause = 10; // ms
    const QString waiting =
        QStringLiteral("SELECT pid FROM pg_locks WHERE NOT granted AND locktype = 'advisory' AND "
                       "database = (SELECT oid FROM pg_database "
                       "WHERE datname = current_database())");
    for (int look = 0; look < mostLooks && texts(waiting).isEmpty(); ++look)
        QThread::msleep(pause);
}

QStringList PlainConnection::tables() const
{
    QStringList tables = database().tables();
    tables.erase(std::remove_if(
                     tables.begin(), tables.end(),
                     [](const QString &name) { return name.startsWith(QLatin1String("sqlite_")); }),
                 tables.end());
    tables.sort();
    return tables;
}

} // namespace KODMS::Tests
