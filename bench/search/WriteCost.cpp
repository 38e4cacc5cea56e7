// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/search/WriteCost.h"

#include "services/records/Transaction.h"

#include <algorithm>

namespace KODMS::Bench {

using namespace Services;

namespace {

constexpr int customer = 1;
constexpr int user = 1;

QString time()
{
    return QStringLiteral("2026-11-21T12:00:00.000Z");
}

} // namespace

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
    const bool isServer = m_database.settings().path.isEmpty();
    QStringList drops;
    {
        SqlQuery query = m_database.prepare(
            isServer ? QStringLiteral("SELECT 'DROP TRIGGER ' || tgname || ' ON ' || "
                                      "CAST(tgrelid AS regclass) AS statement FROM pg_trigger "
                                      "WHERE tgname LIKE '%_log'")
                     : QStringLiteral("SELECT 'DROP TRIGGER ' || name AS statement "
                                      "FROM sqlite_master WHERE type = 'trigger' AND "
                                      "sql LIKE '%INSERT INTO change_log%'"));
        query.exec();
        while (query.next())
            drops << query.text("statement");
    }
    for (const QString &drop : drops)
        m_database.run(drop);
}

void WriteCost::insertFlow(int number)
{
    constexpr int firstSerial = 700000;
    const int serial = firstSerial + number;
    const QString name = QStringLiteral("zzz%1").arg(serial);
    m_database.query("next_customer_serial").bind(":id", customer).exec().next();
    const int file = insertFile(name);
    const int flow = insertJobAndFlow(name, serial, file);
    insertRow(name, serial, file, flow);
    insertRest(name, flow);
}

int WriteCost::insertFile(const QString &name)
{
    SqlQuery query = m_database.query("insert_orig_file");
    query.bind(":guid", name).bind(":base", name).bind(":name", name);
    query.bind(":type", QStringLiteral("tgz")).bind(":customer", QStringLiteral("zzz"));
    query.bind(":kind", 0).bind(":state", 0).bind(":user", user).bind(":time", time()).exec();
    query.next();
    return query.number("id");
}

int WriteCost::insertJobAndFlow(const QString &name, int serial, int file)
{
    SqlQuery job = m_database.query("insert_job");
    job.bind(":name", name).bind(":customer", customer).bind(":serial", serial);
    job.bind(":user", user).bind(":time", time()).exec();
    SqlQuery flow = m_database.query("insert_flow");
    flow.bind(":guid", name).bind(":job", name).bind(":status", 0).bind(":flag", 0);
    flow.bind(":file", file).bindId(":import_file", 0).bindId(":import_user", 0);
    flow.bind(":import_time", QVariant()).bind(":user", user).bind(":time", time()).exec();
    flow.next();
    return flow.number("id");
}

void WriteCost::insertRow(const QString &name, int serial, int file, int flow)
{
    SqlQuery row = m_database.query("insert_compress");
    row.bind(":flow", flow).bind(":customer", customer).bind(":serial", serial);
    row.bind(":name", name).bind(":description", QString::fromLatin1(""));
    row.bind(":tips", QString::fromLatin1("")).bind(":file", file).bind(":user", user);
    for (const char *which : {":flow_time", ":create_time", ":update_time"})
        row.bind(which, time());
    row.exec();
}

void WriteCost::insertRest(const QString &name, int flow)
{
    SqlQuery order = m_database.query("insert_order");
    order.bind(":flow", flow).bind(":payment", 0).bind(":suffix", QStringLiteral("tgz"));
    order.bind(":pay_time", QVariant()).bind(":time", time()).exec();
    SqlQuery event = m_database.query("insert_event");
    event.bind(":time", time()).bind(":user", user).bind(":action", QStringLiteral("intake.take"));
    event.bind(":kind", QStringLiteral("flow")).bind(":record", flow).bind(":name", name);
    event.bind(":before", QString::fromLatin1("")).bind(":after", name).bind(":refused", 0).exec();
}

} // namespace KODMS::Bench
