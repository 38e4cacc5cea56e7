// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/search/BenchDatabase.h"

#include "bench/search/Stopwatch.h"
#include "services/records/SchemaMigrator.h"
#include "services/records/sample/SampleRecords.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>

namespace KODMS::Bench {

using namespace Services;

BenchDatabase::BenchDatabase(const DatabaseSettings &settings, int flows) : m_flows(flows)
{
    DatabaseSettings unlimited = settings;
    unlimited.statementTimeoutMs = 0;
    m_context = std::make_unique<RecordContext>(
        std::make_unique<Database>(unlimited, Database::Open::Create));
    Database &database = m_context->database();
    if (SchemaMigrator(database).installedVersion() == 0)
        generate();
    if (isServer()) {
        // Processor time is read of the one process that serves this connection.
        database.run(QStringLiteral("SET max_parallel_workers_per_gather = 0"));
        SqlQuery server = database.prepare(QStringLiteral("SELECT pg_backend_pid() AS pid"));
        server.exec().next();
        Stopwatch::alsoCount(server.number("pid"));
    } else {
        Stopwatch::alsoCount(0);
    }
    readAll();
    SqlQuery query = database.query("count_flows");
    query.exec().next();
    m_flows = query.number("total");
    m_index = std::make_unique<ColumnIndex>(unlimited, ColumnIndex::Options{0});
    RecordContext::setCurrent(m_context.get());
}

void BenchDatabase::generate()
{
    std::fprintf(stderr, "generating %d flows ...\n", m_flows);
    QElapsedTimer timer;
    timer.start();
    NoProgress progress;
    Outcome outcome = SchemaMigrator(m_context->database()).install();
    if (outcome)
        outcome = SampleRecords(m_context->database(), 0, {}).write(m_flows, 1, progress);
    if (!outcome)
        throw SqlError(SqlError::Kind::Other, {}, outcome.text);
    m_seconds = static_cast<double>(timer.elapsed()) / 1000.0;
}

/// What is measured is no disk: the database is in memory, as that of a server with as much of it
/// as the database takes, and as if the server had cleaned up behind the writers, as it does by
/// itself.
void BenchDatabase::readAll()
{
    if (isServer()) {
        warmServer();
        return;
    }
    QFile file(settings().path);
    constexpr qint64 part = 1 << 20;
    if (file.open(QIODevice::ReadOnly)) {
        while (!file.read(part).isEmpty())
            continue;
    }
}

void BenchDatabase::warmServer()
{
    Database &database = m_context->database();
    try {
        database.run(QStringLiteral("VACUUM (ANALYZE)"));
        database.run(QStringLiteral("CREATE EXTENSION IF NOT EXISTS pg_prewarm"));
        // The tables' indexes last: where not everything has room, they stay.
        database.run(QStringLiteral(
            "SELECT sum(pg_prewarm(oid)) FROM (SELECT oid FROM pg_class WHERE relkind IN "
            "('r', 'i') AND relnamespace = CAST('public' AS regnamespace) "
            "ORDER BY relkind DESC) AS ours"));
    } catch (const SqlError &error) {
        std::fprintf(stderr, "not everything is in memory: %s\n", qPrintable(error.logText()));
    }
}

void BenchDatabase::touchFlow(int id)
{
    m_context->database()
        .prepare(QStringLiteral("UPDATE job_flows SET tips = tips WHERE id = ?"))
        .bind(0, id)
        .exec();
}

qint64 BenchDatabase::bytes()
{
    if (!isServer())
        return QFileInfo(settings().path).size();
    SqlQuery query = m_context->database().prepare(
        QStringLiteral("SELECT pg_database_size(current_database()) AS bytes"));
    query.exec().next();
    return query.int64("bytes");
}

int BenchDatabase::ordinaryUser()
{
    SqlQuery query = m_context->database().prepare(QStringLiteral(
        "SELECT executor_id AS id FROM orig_file_assign ORDER BY flow_id DESC LIMIT 1"));
    query.exec().next();
    return query.number("id");
}

QStringList BenchDatabase::someTexts(const QString &table, const QString &column, int count)
{
    QStringList texts;
    SqlQuery total = m_context->database().prepare(
        QStringLiteral("SELECT count(*) AS total FROM %1").arg(table));
    total.exec().next();
    SqlQuery query = m_context->database().prepare(
        QStringLiteral("SELECT %1 AS value FROM %2 WHERE id % %3 = 0 ORDER BY id LIMIT %4")
            .arg(column, table)
            .arg(std::max(1, total.number("total") / count))
            .arg(count));
    query.exec();
    while (query.next())
        texts << query.text("value");
    return texts;
}

} // namespace KODMS::Bench
