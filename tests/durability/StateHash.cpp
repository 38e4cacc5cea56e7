// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/durability/StateHash.h"

#include <QCryptographicHash>

namespace KODMS::Tests {

using namespace Services;

namespace {

QStringList tablesOf(Database &database)
{
    QStringList tables;
    SqlQuery query = database.prepare(
        QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' AND "
                       "name NOT LIKE 'sqlite_%' AND name <> 'test_states' ORDER BY name"));
    query.exec();
    while (query.next())
        tables << query.text("name");
    return tables;
}

/// One text for a row: each column quoted as the engine does.
QString rowExpression(Database &database, const QString &table)
{
    SqlQuery query =
        database.prepare(QStringLiteral("SELECT group_concat('quote(\"' || name || '\")', "
                                        "' || '','' || ') AS list FROM pragma_table_info('%1')")
                             .arg(table));
    query.exec().next();
    return query.text("list");
}

} // namespace

QByteArray stateHash(Database &database)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString &table : tablesOf(database)) {
        hash.addData(table.toUtf8());
        SqlQuery rows =
            database.prepare(QStringLiteral("SELECT %1 AS row_text FROM %2 ORDER BY row_text")
                                 .arg(rowExpression(database, table), table));
        rows.exec();
        while (rows.next())
            hash.addData(rows.text("row_text").toUtf8() + '\n');
    }
    return hash.result().toHex();
}

void makeStateTable(Database &database)
{
    database.run(QStringLiteral("CREATE TABLE test_states (event INTEGER PRIMARY KEY, hash TEXT)"));
}

int lastEvent(Database &database)
{
    SqlQuery query = database.prepare(QStringLiteral("SELECT max(id) AS last FROM events"));
    query.exec().next();
    return query.number("last");
}

void rememberState(Database &database)
{
    database.prepare(QStringLiteral("INSERT OR REPLACE INTO test_states VALUES (?, ?)"))
        .bind(0, lastEvent(database))
        .bind(1, QString::fromLatin1(stateHash(database)))
        .exec();
}

QByteArray rememberedState(Database &database, int event)
{
    SqlQuery query =
        database.prepare(QStringLiteral("SELECT hash FROM test_states WHERE event = ?"));
    query.bind(0, event).exec();
    return query.next() ? query.text("hash").toLatin1() : QByteArray();
}

} // namespace KODMS::Tests
