// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/bll/support/RecordsHome.h"

#include "services/records/Guid.h"
#include "services/records/SchemaMigrator.h"
#include "services/records/TimeText.h"
#include "services/records/bll/FlowRecords.h"

namespace KODMS::Tests {

using namespace Services;

namespace {

const QString customerCode = QStringLiteral("A1B");

void check(const Outcome &outcome)
{
    if (!outcome)
        qFatal("%s", qPrintable(outcome.text));
}

} // namespace

RecordsHome::RecordsHome() : m_place(TestDatabase::Begin::Absent)
{
    m_database = std::make_unique<Database>(m_pristine.settings(), Database::Open::Create);
    check(SchemaMigrator(*m_database).install());
    insert(QStringLiteral("customers"),
           {{QStringLiteral("code"), customerCode}, {QStringLiteral("create_time"), storedNow()}});
    insert(QStringLiteral("customers"), {{QStringLiteral("code"), QStringLiteral("web")},
                                         {QStringLiteral("create_time"), storedNow()}});
    m_database.reset();
    m_pristine.freeze();
    reset();
}

RecordsHome::~RecordsHome()
{
    close();
}

void RecordsHome::close()
{
    RecordContext::setCurrent(nullptr);
    m_sessions.clear();
    m_database.reset();
}

void RecordsHome::reset()
{
    close();
    m_place.copyFrom(m_pristine);
    m_database = std::make_unique<Database>(settings());
    m_database->run(TestDatabase::hurry());
    m_files.names.clear();
    m_files.removed.clear();
    m_files.failure.clear();
    m_jobs = 0;
}

DatabaseSettings RecordsHome::settings() const
{
    DatabaseSettings settings = m_place.settings();
    settings.busyTimeoutMs = 50;
    return settings;
}

int RecordsHome::insert(const QString &table, const QVariantMap &values)
{
    const QStringList columns = values.keys();
    QStringList marks;
    for (int i = 0; i < columns.size(); ++i)
        marks << QStringLiteral("?");
    SqlQuery query = m_database->prepare(
        QStringLiteral("INSERT INTO %1 (%2) VALUES (%3) RETURNING id")
            .arg(table, columns.join(QLatin1Char(',')), marks.join(QLatin1Char(','))));
    for (int i = 0; i < columns.size(); ++i)
        query.bind(i, values[columns[i]]);
    query.exec().next();
    return query.number("id");
}

int RecordsHome::addUser(const QString &login, const RoleSet &roles, int department, int post)
{
    UserRow user;
    user.loginName = login;
    user.realName = login.toUpper();
    user.department = department;
    user.post = post;
    user.passwordHash = QStringLiteral("none");
    user.roles = roles;
    return UserRecords(*m_database).insert(user);
}

std::string RecordsHome::addFile(const QString &storedName, const QString &type,
                                 const QString &customer)
{
    const QString guid = newGuid();
    insert(QStringLiteral("orig_files"), {{QStringLiteral("guid"), guid},
                                          {QStringLiteral("base_name"), QStringLiteral("base")},
                                          {QStringLiteral("stored_name"), storedName},
                                          {QStringLiteral("file_type"), type},
                                          {QStringLiteral("customer_code"), customer},
                                          {QStringLiteral("create_time"), storedNow()}});
    m_files.names.insert(storedName);
    return guid.toStdString();
}

TestJob RecordsHome::addJob(int status, int flag)
{
    TestJob job;
    const int serial = ++m_jobs;
    const QString name = customerCode + QStringLiteral("%1").arg(serial, 6, 10, QLatin1Char('0'));
    const QString guid = newGuid();
    const QString stored = newGuid() + QStringLiteral(".zip");
    const QString now = storedNow();
    job.jobName = name.toStdString();
    job.flowGuid = guid.toStdString();
    job.storedName = stored.toStdString();
    job.fileGuid = addFile(stored, QStringLiteral("zip"));
    job.fileId = one(QStringLiteral("SELECT max(id) AS value FROM orig_files")).toInt();
    insert(QStringLiteral("jobs"), {{QStringLiteral("name"), name},
                                    {QStringLiteral("customer_id"), 1},
                                    {QStringLiteral("serial_number"), serial},
                                    {QStringLiteral("create_time"), now}});
    job.flowId = insert(QStringLiteral("job_flows"), {{QStringLiteral("guid"), guid},
                                                      {QStringLiteral("job_name"), name},
                                                      {QStringLiteral("flow_status"), status},
                                                      {QStringLiteral("check_flag"), flag},
                                                      {QStringLiteral("orig_file_id"), job.fileId},
                                                      {QStringLiteral("create_time"), now}});
    job.rowId = insert(QStringLiteral("job_compress"),
                       {{QStringLiteral("flow_id"), job.flowId},
                        {QStringLiteral("customer_id"), 1},
                        {QStringLiteral("serial_number"), serial},
                        {QStringLiteral("orig_name"), QStringLiteral("board")},
                        {QStringLiteral("orig_file_id"), job.fileId},
                        {QStringLiteral("flow_create_time"), now},
                        {QStringLiteral("create_time"), now},
                        {QStringLiteral("update_time"), now}});
    insert(QStringLiteral("orders"), {{QStringLiteral("flow_id"), job.flowId},
                                      {QStringLiteral("suffix"), QStringLiteral("zip")},
                                      {QStringLiteral("create_time"), now}});
    return job;
}

int RecordsHome::addQuestion(const TestJob &job)
{
    return insert(QStringLiteral("questions"),
                  {{QStringLiteral("flow_id"), job.flowId},
                   {QStringLiteral("title"), QStringLiteral("孔径")},
                   {QStringLiteral("description"), QStringLiteral("?")},
                   {QStringLiteral("create_time"), storedNow()}});
}

void RecordsHome::set(const QString &table, const QString &column, const QVariant &value, int id)
{
    SqlQuery query =
        m_database->prepare(QStringLiteral("UPDATE %1 SET %2 = ? WHERE id = ?").arg(table, column));
    query.bind(0, value).bind(1, id).exec();
}

QVariant RecordsHome::get(const QString &table, const QString &column, int id)
{
    return one(
        QStringLiteral("SELECT %1 AS value FROM %2 WHERE id = %3").arg(column, table).arg(id));
}

QVariant RecordsHome::one(const QString &sql)
{
    SqlQuery query = m_database->prepare(sql);
    query.exec();
    if (!query.next() || query.isNull("value"))
        return {};
    return query.text("value");
}

QString RecordsHome::dump()
{
    const PlainConnection plain(settings());
    QString text;
    for (const QString &table : plain.tables()) {
        if (table == QLatin1String("events") || table == QLatin1String("change_log"))
            continue;
        for (const QString &row : plain.sortedRows(QStringLiteral("SELECT * FROM ") + table))
            text += table + QLatin1Char(' ') + row + QLatin1Char('\n');
    }
    return text;
}

QVariantMap RecordsHome::lastEvent()
{
    QVariantMap event;
    SqlQuery query =
        m_database->prepare(QStringLiteral("SELECT * FROM events ORDER BY id DESC LIMIT 1"));
    query.exec();
    if (!query.next())
        return event;
    for (const char *column : {"user_id", "action", "record_kind", "record_id", "record_name",
                               "before_value", "after_value", "refused", "create_time"})
        event.insert(QString::fromLatin1(column), query.text(column));
    return event;
}

TestSession &RecordsHome::signIn(int userId)
{
    auto session = std::make_unique<TestSession>();
    session->context = std::make_unique<RecordContext>(std::make_unique<Database>(settings()));
    session->context->database().run(TestDatabase::hurry());
    session->context->setStoredFiles(&m_files);
    session->context->setShownRecords(&session->memory);
    if (const auto user = UserRecords(*m_database).byId(userId))
        session->context->setActor(user->actor());
    m_sessions.push_back(std::move(session));
    makeCurrent(*m_sessions.back());
    return *m_sessions.back();
}

void RecordsHome::makeCurrent(TestSession &session)
{
    RecordContext::setCurrent(session.context.get());
}

void RecordsHome::show(TestSession &session, const TestJob &job)
{
    const auto flow = FlowRecords(*m_database).byId(job.flowId);
    session.memory.shown({ShownRow::View::Flow, job.flowId, job.flowId,
                          QString::fromStdString(job.flowGuid), flow->versions, flow->jobName});
}

} // namespace KODMS::Tests
