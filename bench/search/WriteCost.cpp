// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/search/WriteCost.h"

#include "services/records/Transaction.h"

#include <algorithm>

namespace KODMS::Bench {

using namespace Services;

void WriteCost::measure(int rounds)
{
    for (int i = 0; i < rounds; ++i) {
        round(m_logged, true);
        round(m_plain, false);
    }
}

double WriteCost::ratio() const
{
    std::vector<double> ratios;
    for (std::size_t i = 0; i < m_logged.count(); ++i)
        ratios.push_back(m_logged.cpuOf(i) / std::max(0.001, m_plain.cpuOf(i)));
    std::sort(ratios.begin(), ratios.end());
    return ratios.empty() ? 0 : ratios[ratios.size() / 2];
}

void WriteCost::round(Stopwatch &watch, bool isLogged)
{
    Transaction undone(m_database);
    if (!isLogged)
        dropLogTriggers();
    watch.measure([this] {
        for (int i = 0; i < flows; ++i)
            insertFlow(i);
    });
}

void WriteCost::dropLogTriggers()
{
    QStringList names;
    {
        SqlQuery query = m_database.prepare(
            QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'trigger' AND sql LIKE "
                           "'%INSERT INTO change_log%'"));
        query.exec();
        while (query.next())
            names << query.text("name");
    }
    for (const QString &name : names)
        m_database.run(QStringLiteral("DROP TRIGGER ") + name);
}

void WriteCost::insert(const QString &sql, const QVector<QVariant> &values)
{
    SqlQuery query = m_database.prepare(sql);
    for (int i = 0; i < values.size(); ++i)
        query.bind(i, values.at(i));
    query.exec();
}

void WriteCost::insertFlow(int number)
{
    constexpr int firstId = 1900000000;
    const int id = firstId + number;
    const QString name = QStringLiteral("zzz%1").arg(id);
    const QString time = QStringLiteral("2026-11-21T12:00:00.000Z");
    insert(QStringLiteral("INSERT INTO jobs (id, name, customer_id, serial_number, create_time) "
                          "VALUES (?, ?, 1, ?, ?)"),
           {id, name, id, time});
    insert(QStringLiteral("INSERT INTO orig_files (id, guid, stored_name, create_time) "
                          "VALUES (?, ?, ?, ?)"),
           {id, name, name, time});
    insert(QStringLiteral("INSERT INTO job_flows (id, guid, job_name, orig_file_id, create_time) "
                          "VALUES (?, ?, ?, ?, ?)"),
           {id, name, name, id, time});
    insert(QStringLiteral("INSERT INTO job_compress (id, flow_id, customer_id, serial_number, "
                          "orig_name, orig_file_id, flow_create_time, create_time, update_time) "
                          "VALUES (?, ?, 1, ?, ?, ?, ?, ?, ?)"),
           {id, id, id, name, id, time, time, time});
    insert(QStringLiteral("INSERT INTO orders (flow_id, create_time) VALUES (?, ?)"), {id, time});
}

} // namespace KODMS::Bench
