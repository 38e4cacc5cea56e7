// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ServerCopy.h"

#include "tests/support/PlainConnection.h"

#include <QVector>

#include <algorithm>

namespace KODMS::Tests {

namespace {

QVector<ServerCopy> &kept()
{
    static QVector<ServerCopy> copies;
    return copies;
}

/// Tables, columns, keys, indexes, triggers, functions and settings: each has its row here.
QString shapeOf(const PlainConnection &connection)
{
    return connection
        .texts(QStringLiteral(
            "SELECT (SELECT string_agg(c.relname || a.attname, ' ' ORDER BY c.oid, a.attnum) FROM "
            "pg_class c JOIN pg_attribute a ON a.attrelid = c.oid WHERE c.relnamespace = "
            "'public'::regnamespace) || (SELECT count(*) FROM pg_trigger) || ' ' || "
            "(SELECT count(*) FROM pg_proc) || ' ' || (SELECT count(*) FROM pg_constraint) || ' ' "
            "|| (SELECT count(*) FROM pg_db_role_setting s JOIN "
            "pg_database d ON d.oid = s.setdatabase WHERE d.datname = current_database())"))
        .value(0);
}

QString quoted(QString text)
{
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QLatin1String("''")) +
           QLatin1Char('\'');
}

QString rowsOf(const PlainConnection &connection, const QString &table)
{
    const QString rows =
        connection.texts(QStringLiteral("SELECT json_agg(t) FROM %1 t").arg(table)).value(0);
    if (rows.isEmpty())
        return {};
    return QStringLiteral("INSERT INTO %1 OVERRIDING SYSTEM VALUE SELECT * FROM "
                          "json_populate_recordset(NULL::%1, %2);\n")
        .arg(table, quoted(rows));
}

QString scriptOf(const PlainConnection &connection)
{
    // One statement, done or not done when its answer is there, and then not lost with the server.
    QString script = QStringLiteral("DO $restore$ BEGIN\n"
                                    "SET LOCAL session_replication_role = replica;\n"
                                    "SET LOCAL synchronous_commit = on;\n");
    for (const QString &table : connection.tables())
        script += QStringLiteral("DELETE FROM %1;\n").arg(table) + rowsOf(connection, table);
    const QStringList counters = connection.texts(QStringLiteral(
        "SELECT format('PERFORM setval(%L, %s, %L);', quote_ident(sequencename), "
        "coalesce(last_value, start_value), last_value IS NOT NULL) FROM pg_sequences"));
    return script + counters.join(QLatin1Char('\n')) + QStringLiteral("\nEND $restore$");
}

} // namespace

ServerCopy::ServerCopy(QString origin, const Services::DatabaseSettings &settings, bool isOfLasting)
    : m_name(settings.name), m_origin(std::move(origin)), m_isOfLasting(isOfLasting)
{
    const PlainConnection connection(settings);
    m_shape = shapeOf(connection);
    m_script = scriptOf(connection);
}

bool ServerCopy::restore(const QString &origin, const Services::DatabaseSettings &settings) const
{
    if (m_name.isEmpty() || m_origin != origin)
        return false;
    const PlainConnection connection(settings);
    // Whoever was killed lives on there for a moment.
    connection.run(QStringLiteral("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE "
                                  "datname = current_database() AND pid <> pg_backend_pid()"));
    if (shapeOf(connection) != m_shape)
        return false;
    connection.run(m_script);
    return true;
}

void ServerCopy::keepForOthers(const ServerCopy &copy)
{
    kept().append(copy);
}

std::optional<ServerCopy> ServerCopy::keptOf(const QString &origin)
{
    QVector<ServerCopy> &copies = kept();
    const auto found = std::find_if(copies.begin(), copies.end(), [&](const ServerCopy &copy) {
        return copy.m_origin == origin;
    });
    if (found == copies.end())
        return std::nullopt;
    ServerCopy copy = *found;
    copies.erase(found);
    return copy;
}

QStringList ServerCopy::forgetKept()
{
    QStringList names;
    for (const ServerCopy &copy : qAsConst(kept()))
        names << copy.m_name;
    kept().clear();
    return names;
}

} // namespace KODMS::Tests
