// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/sample/SampleRecords.h"

#include "services/records/Database.h"
#include "services/records/Dialect.h"
#include "services/records/Transaction.h"
#include "services/records/sample/SampleInserts.h"
#include "services/records/sample/SampleWords.h"

#include <QCoreApplication>
#include <QSet>

#include <algorithm>
#include <utility>

namespace KODMS::Services {

namespace {

constexpr int chunk = 20000;
constexpr const char *longAgo = "2019-01-01T00:00:00.000Z";

void runScript(Database &database, const char *folder)
{
    const QStringList statements = database.catalog().script(QLatin1String(folder));
    for (const QString &statement : statements)
        database.run(statement);
}

/// A million rows and their indexes take longer than any statement of a desk may.
class WithoutStatementTimeout {
public:
    explicit WithoutStatementTimeout(Database &database) : m_database(database)
    {
        m_database.dialect().setStatementTimeout(0);
    }

    ~WithoutStatementTimeout()
    {
        m_database.dialect().setStatementTimeout(m_database.settings().statementTimeoutMs);
    }

    WithoutStatementTimeout(const WithoutStatementTimeout &) = delete;
    WithoutStatementTimeout &operator=(const WithoutStatementTimeout &) = delete;

private:
    Database &m_database;
};

/// Three letters or digits, never the web customer's.
QString randomCode(SampleRandom &random)
{
    static const QString signs = QStringLiteral("ABCDEFGHJKLMNPQRSTUVWXYZ23456789");
    QString code;
    for (int i = 0; i < 3; ++i)
        code += signs.at(random.below(i == 0 ? 24 : signs.size()));
    return code == QLatin1String("WEB") ? QStringLiteral("WEA") : code;
}

Outcome cancelled()
{
    return Outcome::failure(QCoreApplication::translate("SampleRecords", "已取消"));
}

} // namespace

SampleRecords::SampleRecords(Database &database, int flowsWithBodies, TakeFile takeFile)
    : m_database(database), m_flowsWithBodies(flowsWithBodies), m_takeFile(std::move(takeFile))
{
}

int SampleRecords::largest(const char *statement)
{
    SqlQuery query = m_database.query(statement);
    query.exec().next();
    return query.number("largest");
}

QVector<SampleUser> SampleRecords::people(bool accountsOnly)
{
    QVector<SampleUser> users;
    SqlQuery query = m_database.query("select_sample_people");
    query.exec();
    while (query.next()) {
        if (!accountsOnly || query.number("is_account") == 1)
            users << SampleUser{query.number("id"), query.text("real_name")};
    }
    return users;
}

void SampleRecords::addStaff(SampleRandom &random)
{
    constexpr int staff = 36;
    constexpr int posts[][2] = {{2, 6}, {3, 10}}; // executors, pre-checkers
    for (int i = 0; i < staff; ++i) {
        const auto &post = posts[i % 2];
        const QString name =
            random.oneOf(SampleWords::surnames()) + random.oneOf(SampleWords::givenNames());
        m_database.query("insert_sample_user")
            .bind(":login_name", QStringLiteral("staff%1").arg(i + 1, 2, 10, QLatin1Char('0')))
            .bind(":real_name", name)
            .bind(":department", post[0])
            .bind(":post", post[1])
            .bind(":create_time", QLatin1String(longAgo))
            .exec();
    }
}

void SampleRecords::addCustomer(SampleRandom &random, const QString &code)
{
    const QString &city = random.oneOf(SampleWords::cities());
    const QString &trade = random.oneOf(SampleWords::trades());
    const QString &form = random.oneOf(SampleWords::companyForms());
    const QString group = random.percent(40) ? trade + QStringLiteral("集团") : QString();
    m_database.query("insert_sample_customer")
        .bind(":code", code)
        .bind(":short_name", QString(city + trade + form))
        .bind(":superior_1", group)
        .bind(":superior_2", random.percent(50) && !group.isEmpty()
                                 ? QString(city + QStringLiteral("分公司"))
                                 : QString())
        .bind(":create_time", QLatin1String(longAgo))
        .exec();
}

QVector<SampleCustomer> SampleRecords::customers(SampleRandom &random, int wanted)
{
    const auto known = [this] {
        QVector<SampleCustomer> list;
        SqlQuery query = m_database.query("select_sample_customers");
        query.exec();
        while (query.next())
            list << SampleCustomer{query.number("id"), query.text("code"),
                                   query.number("last_serial")};
        return list;
    };
    QSet<QString> codes;
    const QVector<SampleCustomer> before = known();
    for (const SampleCustomer &customer : before)
        codes << customer.code.toUpper();
    if (!codes.contains(QStringLiteral("WEB")))
        addCustomer(random, QStringLiteral("web"));
    for (int count = before.size() + 1; count < wanted; ++count) {
        QString code = randomCode(random);
        while (codes.contains(code))
            code = randomCode(random);
        codes << code;
        addCustomer(random, code);
    }
    QVector<SampleCustomer> all = known();
    std::stable_partition(all.begin(), all.end(), [](const SampleCustomer &customer) {
        return customer.code.compare(QLatin1String("web"), Qt::CaseInsensitive) == 0;
    });
    return all;
}

SampleFactory::Plan SampleRecords::plan(int flows, quint32 seed)
{
    constexpr int mostCustomers = 300;
    SampleRandom random(seed ^ 0x5eedU);
    SampleFactory::Plan plan;
    plan.flows = flows;
    plan.seed = seed;
    plan.flowsWithBodies = m_flowsWithBodies;
    plan.lastFlowId = largest("largest_flow_id");
    plan.lastFileId = largest("largest_orig_file_id");
    plan.accounts = people(true);
    if (people(false).size() == plan.accounts.size())
        addStaff(random);
    plan.staff = people(false);
    plan.customers = customers(random, std::min(mostCustomers, std::max(8, flows / 20)));
    return plan;
}

void SampleRecords::dropWhatCanWait()
{
    const QStringList statements = m_database.catalog().deferrableStatements();
    for (const QString &statement : statements)
        m_database.run(m_database.dialect().dropOf(statement));
}

void SampleRecords::makeWhatWaited()
{
    const QStringList statements = m_database.catalog().deferrableStatements();
    for (const QString &statement : statements)
        m_database.run(statement);
    constexpr int everything = 0;
    m_database.query("insert_change")
        .bind(":kind", everything)
        .bind(":row_id", 0)
        .bind(":op", 2)
        .exec();
}

Outcome SampleRecords::write(int flows, quint32 seed, Progress &progress)
{
    progress.setTotal(flows);
    const WithoutStatementTimeout unlimited(m_database);
    Transaction transaction(m_database);
    const bool isEmpty = largest("largest_flow_id") == 0;
    SampleFactory factory(plan(flows, seed));
    if (isEmpty)
        dropWhatCanWait();
    runScript(m_database, "sample/begin");
    const Outcome outcome = writeFlows(factory, flows, progress);
    if (!outcome)
        return outcome;
    runScript(m_database, "sample/end");
    if (isEmpty)
        makeWhatWaited();
    runScript(m_database, "filled");
    transaction.commit();
    return Outcome::success();
}

Outcome SampleRecords::writeFlows(SampleFactory &factory, int flows, Progress &progress)
{
    SampleInserts inserts(m_database);
    for (int made = 1; made <= flows; ++made) {
        const SampleFlow flow = factory.next();
        if (flow.hasBodies && progress.isCancelled())
            return cancelled();
        for (const SampleFile &file : flow.files) {
            const Outcome outcome = flow.hasBodies ? m_takeFile(file) : Outcome::success();
            if (!outcome)
                return outcome;
            inserts.file(file, flow.hasBodies);
        }
        inserts.flow(flow);
        for (const SampleQuestion &question : flow.questions)
            inserts.question(flow.id, question);
        if (made % chunk != 0 && made != flows)
            continue;
        inserts.flush();
        runScript(m_database, "sample/chunk");
        progress.advance(made % chunk == 0 ? chunk : made % chunk);
        if (progress.isCancelled())
            return cancelled();
    }
    return Outcome::success();
}

} // namespace KODMS::Services
