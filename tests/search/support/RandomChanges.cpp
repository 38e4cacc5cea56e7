// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/search/support/RandomChanges.h"

#include "services/records/Transaction.h"
#include "tests/support/TestDatabase.h"

namespace KODMS::Tests {

namespace {

/// One that makes its column wider; a server's column takes no larger one.
qint64 largeNumber()
{
    return TestDatabase::isServer() ? 2000000000LL : 7000000000LL;
}

} // namespace

RandomChanges::RandomChanges(Services::Database &database, quint32 seed)
    : m_database(database), m_random(seed), m_records(seed + 1)
{
}

void RandomChanges::step()
{
    Services::Transaction transaction(m_database);
    const int changes = 1 + m_random.bounded(3);
    for (int i = 0; i < changes; ++i)
        one();
    transaction.commit();
}

void RandomChanges::one()
{
    switch (m_random.bounded(20)) {
    case 0:
    case 1:
    case 2:
        return addFlow();
    case 3:
        return removeOrigFile();
    case 4:
        return removeFlow();
    case 5:
    case 6:
        return changeJob();
    case 7:
    case 8:
        return changePeople();
    case 9:
    case 10:
        return assign();
    case 11:
        return dateBack();
    case 12:
    case 13:
    case 14:
        return changeOrigFile();
    case 15:
        return disturbLog();
    default:
        return changeFlow();
    }
}

void RandomChanges::run(const QString &sql, const QVector<QVariant> &values)
{
    Services::SqlQuery query = m_database.prepare(sql);
    for (int i = 0; i < values.size(); ++i)
        query.bind(i, values.at(i));
    query.exec();
}

int RandomChanges::largest(const char *table)
{
    Services::SqlQuery query = m_database.prepare(
        QStringLiteral("SELECT COALESCE(MAX(id), 0) AS id FROM ") + QLatin1String(table));
    query.exec().next();
    return query.number("id");
}

/// The first id from a random one on; 0 when there is none.
int RandomChanges::someId(const char *table)
{
    Services::SqlQuery query =
        m_database.prepare(QStringLiteral("SELECT COALESCE(MIN(id), 0) AS id FROM %1 WHERE id >= ?")
                               .arg(QLatin1String(table)));
    query.bind(0, m_random.bounded(largest(table) + 1)).exec().next();
    return query.number("id");
}

/// Now and then one that no longer fits where the old one stood.
QString RandomChanges::text()
{
    const QString some = RandomRecords::awkwardText(m_random);
    return m_random.bounded(30) == 0 ? some.repeated(2000) : some;
}

void RandomChanges::addFlow()
{
    const int id = 1 + std::max({largest("job_flows"), largest("jobs"), largest("orig_files"),
                                 largest("job_compress")});
    m_records.addFlow(m_database, id);
}

void RandomChanges::removeOrigFile()
{
    run(QStringLiteral("DELETE FROM job_compress WHERE id = ?"), {someId("job_compress")});
}

void RandomChanges::removeFlow()
{
    const int id = someId("job_flows");
    for (const char *table : {"job_compress", "orders", "orig_file_assign", "pre_check_assign"})
        run(QStringLiteral("DELETE FROM %1 WHERE flow_id = ?").arg(QLatin1String(table)), {id});
    run(QStringLiteral("DELETE FROM job_flows WHERE id = ?"), {id});
}

void RandomChanges::changeFlow()
{
    const int id = someId("job_flows");
    switch (m_random.bounded(4)) {
    case 0:
        run(QStringLiteral("UPDATE job_flows SET orig_job_name = ?, tips = ? WHERE id = ?"),
            {text(), text(), id});
        break;
    case 1:
        run(QStringLiteral("UPDATE job_flows SET batch_number = ? WHERE id = ?"),
            {m_random.bounded(10) == 0 ? largeNumber() : m_random.bounded(-5, 300), id});
        break;
    case 2:
        run(QStringLiteral("UPDATE job_flows SET last_import_user_id = ?, last_import_time = ? "
                           "WHERE id = ?"),
            {1 + m_random.bounded(RandomRecords::users), QStringLiteral("2026-11-20T00:00:00.000Z"),
             id});
        break;
    default:
        run(QStringLiteral("UPDATE job_flows SET flow_status = ?, check_flag = ? WHERE id = ?"),
            {m_random.bounded(4), m_random.bounded(3), id});
    }
}

void RandomChanges::changeJob()
{
    const int id = someId("jobs");
    if (m_random.bounded(2) == 0)
        run(QStringLiteral("UPDATE jobs SET name = ? WHERE id = ?"),
            {QString(RandomRecords::awkwardText(m_random) + QStringLiteral("n%1").arg(id)), id});
    else
        run(QStringLiteral("UPDATE jobs SET layer_count = ?, feature_count = ?, "
                           "create_user_id = ? WHERE id = ?"),
            {m_random.bounded(40), m_random.bounded(1000000),
             m_random.bounded(2) == 0 ? QVariant(QVariant::Int)
                                      : QVariant(1 + m_random.bounded(RandomRecords::users)),
             id});
}

void RandomChanges::changeOrigFile()
{
    run(QStringLiteral("UPDATE job_compress SET orig_name = ?, tips = ?, description = ?, "
                       "serial_number = ?, customer_id = ? WHERE id = ?"),
        {text(), text(), text(), m_random.bounded(40),
         1 + m_random.bounded(RandomRecords::customers), someId("job_compress")});
}

void RandomChanges::changePeople()
{
    const int id = largest("users") + 1;
    switch (m_random.bounded(3)) {
    case 0:
        run(QStringLiteral("UPDATE users SET real_name = ? WHERE id = ?"),
            {text(), someId("users")});
        break;
    case 1:
        run(QStringLiteral("UPDATE customers SET short_name = ?, superior_1 = ?, superior_2 = ? "
                           "WHERE id = ?"),
            {text(), text(), text(), someId("customers")});
        break;
    default:
        insertRow(m_database, "users",
                  {{QStringLiteral("id"), id},
                   {QStringLiteral("login_name"), QStringLiteral("user%1").arg(id)},
                   {QStringLiteral("real_name"), text()},
                   {QStringLiteral("create_time"), QStringLiteral("2026-11-20T00:00:00.000Z")}});
    }
}

void RandomChanges::assign()
{
    const QString table = m_random.bounded(2) == 0 ? QStringLiteral("orig_file_assign")
                                                   : QStringLiteral("pre_check_assign");
    const int flow = someId("job_flows");
    run(QStringLiteral("DELETE FROM %1 WHERE flow_id = ?").arg(table), {flow});
    if (flow != 0 && m_random.bounded(3) > 0)
        run(QStringLiteral("INSERT INTO %1 (flow_id, executor_id, assign_time) VALUES (?, ?, '')")
                .arg(table),
            {flow, someId("users")});
}

void RandomChanges::dateBack()
{
    run(QStringLiteral("UPDATE job_flows SET create_time = ? WHERE id = ?"),
        {QStringLiteral("20%1-11-03T01:00:00.000Z").arg(m_random.bounded(20, 40)),
         someId("job_flows")});
}

/// What may make everything be read again.
void RandomChanges::disturbLog()
{
    switch (m_random.bounded(6)) {
    case 0:
        run(QStringLiteral("INSERT INTO change_log (kind, row_id, op) VALUES (0, 0, 2)"), {});
        break;
    case 1:
        run(QStringLiteral("DELETE FROM change_log"), {});
        break;
    case 2: // also of what nobody has read yet
        run(QStringLiteral("DELETE FROM change_log "
                           "WHERE seq <= (SELECT max(seq) FROM change_log) - ?"),
            {m_random.bounded(1, 6)});
        break;
    default:
        changeFlow();
    }
}

} // namespace KODMS::Tests
