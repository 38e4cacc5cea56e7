// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/search/BenchDatabase.h"

#include "services/records/SchemaMigrator.h"
#include "services/records/sample/SampleRecords.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <cstdio>

namespace KODMS::Bench {

using namespace Services;

BenchDatabase::BenchDatabase(const QString &path, int flows)
    : m_path(path.isEmpty() ? m_dir.filePath(QStringLiteral("bench.db")) : path), m_flows(flows)
{
    const bool isThere = QFileInfo::exists(m_path);
    DatabaseSettings settings;
    settings.driver = QStringLiteral("sqlite");
    settings.path = m_path;
    settings.statementTimeoutMs = 0;
    m_context = std::make_unique<RecordContext>(
        std::make_unique<Database>(settings, Database::Open::Create));
    if (!isThere)
        generate();
    SqlQuery query = m_context->database().query("count_flows");
    query.exec().next();
    m_flows = query.number("total");
    m_index = std::make_unique<ColumnIndex>(settings, ColumnIndex::Options{0});
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

void BenchDatabase::touchFlow(int id)
{
    m_context->database()
        .prepare(QStringLiteral("UPDATE job_flows SET tips = tips WHERE id = ?"))
        .bind(0, id)
        .exec();
}

qint64 BenchDatabase::fileSize() const
{
    return QFileInfo(m_path).size();
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
    SqlQuery query = m_context->database().prepare(
        QStringLiteral(
            "SELECT %1 AS value FROM %2 WHERE id % MAX(1, (SELECT count(*) FROM %2) / ?) "
            "= 0 ORDER BY id LIMIT ?")
            .arg(column, table));
    query.bind(0, count).bind(1, count);
    query.exec();
    while (query.next())
        texts << query.text("value");
    return texts;
}

} // namespace KODMS::Bench
