// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/records/support/SchemaText.h"

#include "services/records/Database.h"
#include "tests/support/TestDatabase.h"

namespace KODMS::Tests {

using Services::Database;
using Services::SqlQuery;

namespace {

const QString embedded = QStringLiteral(
    "SELECT type || ' ' || name || ' ' || COALESCE(sql, '') AS line FROM sqlite_master "
    "ORDER BY type, name");

const QString server = QStringLiteral(
    "SELECT line FROM ("
    "SELECT 'column ' || table_name || ' ' || ordinal_position || ' ' || column_name || ' ' || "
    "data_type || ' ' || is_nullable || ' ' || is_identity || ' ' || coalesce(column_default, '') "
    "AS line FROM information_schema.columns WHERE table_schema = 'public' "
    "UNION ALL SELECT 'index ' || indexdef FROM pg_indexes WHERE schemaname = 'public' "
    "UNION ALL SELECT 'rule ' || CAST(conrelid AS regclass) || ' ' || pg_get_constraintdef(oid) "
    "FROM pg_constraint WHERE connamespace = CAST('public' AS regnamespace) "
    "UNION ALL SELECT 'view ' || viewname || ' ' || definition FROM pg_views "
    "WHERE schemaname = 'public' "
    "UNION ALL SELECT 'function ' || pg_get_functiondef(oid) FROM pg_proc "
    "WHERE pronamespace = CAST('public' AS regnamespace) "
    "UNION ALL SELECT 'trigger ' || pg_get_triggerdef(t.oid) FROM pg_trigger t "
    "JOIN pg_class c ON c.oid = t.tgrelid WHERE NOT t.tgisinternal "
    "AND c.relnamespace = CAST('public' AS regnamespace)) AS lines ORDER BY line");

QStringList linesOf(SqlQuery &query, const char *column)
{
    QStringList all;
    query.exec();
    while (query.next())
        all << query.text(column).simplified();
    return all;
}

} // namespace

QStringList schemaOf(Database &database)
{
    SqlQuery query = database.prepare(TestDatabase::isServer() ? server : embedded);
    return linesOf(query, "line");
}

QStringList problemsOf(Database &database)
{
    SqlQuery query = database.query("check_database");
    return linesOf(query, "problem");
}

} // namespace KODMS::Tests
