// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/records/support/RandomRecords.h"

#include "services/records/Guid.h"
#include "services/records/Transaction.h"

namespace KODMS::Tests {

using Services::Database;

void insertRow(Database &database, const char *table,
               const QVector<QPair<QString, QVariant>> &values)
{
    QStringList names;
    QStringList marks;
    for (const auto &value : values) {
        names << value.first;
        marks << QStringLiteral("?");
    }
    Services::SqlQuery query = database.prepare(
        QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
            .arg(QLatin1String(table), names.join(QLatin1Char(',')), marks.join(QLatin1Char(','))));
    for (int i = 0; i < values.size(); ++i)
        query.bind(i, values.at(i).second);
    query.exec();
}

namespace {

QPair<QString, QVariant> column(const char *name, const QVariant &value)
{
    return {QLatin1String(name), value};
}

} // namespace

QString RandomRecords::awkwardText(QRandomGenerator &random)
{
    static const QStringList pieces{
        QStringLiteral("a"), QStringLiteral("A"),   QStringLiteral("ab"),   QStringLiteral("Web"),
        QStringLiteral("é"), QStringLiteral("É"),   QStringLiteral("深圳"), QStringLiteral("圳"),
        QStringLiteral("😀"), QStringLiteral("%"),   QStringLiteral("_"),    QStringLiteral("\\"),
        QStringLiteral("'"), QStringLiteral("\""),  QStringLiteral("12"),   QStringLiteral("0"),
        QStringLiteral(" "), QStringLiteral(";--"), QStringLiteral("*"),    QStringLiteral("?1"),
        QStringLiteral("ß"), QStringLiteral("İ"),   QStringLiteral("K")};
    QString text;
    const int count = random.bounded(7);
    for (int i = 0; i < count; ++i)
        text += pieces.at(random.bounded(pieces.size()));
    return text;
}

QString RandomRecords::writing()
{
    constexpr int oneIn = 40;
    QString text = awkwardText(m_random);
    if (m_mostPieces == 0 || m_random.bounded(oneIn) != 0)
        return text;
    for (int pieces = m_random.bounded(m_mostPieces); pieces > 0; pieces -= 3) // on average
        text += awkwardText(m_random);
    return text;
}

QVariant RandomRecords::someone()
{
    const int id = m_random.bounded(users + 2);
    return id == 0 || id > users ? QVariant(QVariant::Int) : QVariant(id);
}

QString RandomRecords::time()
{
    // Few different ones, so that ids have to break ties.
    return QStringLiteral("2026-11-%1T0%2:00:00.000Z")
        .arg(1 + m_random.bounded(9), 2, 10, QLatin1Char('0'))
        .arg(m_random.bounded(3));
}

void RandomRecords::fill(Database &database, int flows)
{
    Services::Transaction transaction(database);
    fillUsers(database);
    fillCustomers(database);
    for (int id = 1; id <= flows; ++id)
        addFlow(database, id);
    transaction.commit();
}

void RandomRecords::addFlow(Database &database, int id)
{
    fillFlow(database, id);
    fillAssignments(database, id);
}

void RandomRecords::fillUsers(Database &database)
{
    for (int id = 1; id <= users; ++id)
        insertRow(database, "users",
                  {column("id", id), column("login_name", QStringLiteral("user%1").arg(id)),
                   column("real_name", awkwardText(m_random)), column("create_time", time())});
}

void RandomRecords::fillCustomers(Database &database)
{
    for (int id = 1; id <= customers; ++id)
        insertRow(database, "customers",
                  {column("id", id),
                   column("code", id == 1 ? QStringLiteral("web") : QStringLiteral("C%1").arg(id)),
                   column("short_name", awkwardText(m_random)),
                   column("superior_1", awkwardText(m_random)),
                   column("superior_2", awkwardText(m_random)), column("create_time", time())});
}

void RandomRecords::fillFlow(Database &database, int id)
{
    const QString job = awkwardText(m_random) + QString::number(id);
    const QString created = time();
    const int customer = 1 + m_random.bounded(customers);
    const bool isImported = m_random.bounded(2) == 1;
    insertRow(database, "jobs",
              {column("id", id), column("name", job), column("customer_id", customer),
               column("serial_number", id), column("layer_count", m_random.bounded(14)),
               column("feature_count", m_random.bounded(200)), column("create_user_id", someone()),
               column("create_time", created)});
    insertRow(database, "orig_files",
              {column("id", id), column("guid", Services::newGuid()),
               column("stored_name", QString(Services::newGuid() + QStringLiteral(".tgz"))),
               column("file_type", m_random.bounded(3) == 0 ? QString() : QStringLiteral("tgz")),
               column("create_time", created)});
    insertRow(
        database, "job_flows",
        {column("id", id), column("guid", Services::newGuid()), column("job_name", job),
         column("orig_job_name", awkwardText(m_random)), column("flow_status", m_random.bounded(4)),
         column("check_flag", m_random.bounded(3)), column("batch_number", m_random.bounded(130)),
         column("tips", writing()), column("orig_file_id", id), column("create_user_id", someone()),
         column("create_time", created),
         column("last_import_user_id", isImported ? someone() : QVariant(QVariant::Int)),
         column("last_import_time", isImported ? QVariant(time()) : QVariant())});
    insertRow(database, "job_compress",
              {column("id", id), column("flow_id", id), column("customer_id", customer),
               column("serial_number", m_random.bounded(40)), column("orig_name", writing()),
               column("tips", writing()), column("description", writing()),
               column("orig_file_id", id), column("flow_create_time", created),
               column("create_time", created), column("update_time", time())});
}

void RandomRecords::fillAssignments(Database &database, int id)
{
    const QVariant executor = someone();
    if (!executor.isNull())
        insertRow(database, "orig_file_assign",
                  {column("flow_id", id), column("executor_id", executor),
                   column("assign_time", time())});
    const QVariant checker = someone();
    if (!checker.isNull())
        insertRow(
            database, "pre_check_assign",
            {column("flow_id", id), column("executor_id", checker), column("assign_time", time())});
    if (m_random.bounded(4) != 0)
        insertRow(database, "orders",
                  {column("flow_id", id), column("suffix", QStringLiteral("zip")),
                   column("create_time", time())});
}

} // namespace KODMS::Tests
