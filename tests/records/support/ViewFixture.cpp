// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/records/support/ViewFixture.h"

#include "foundation/bll/Odbpp_Flow_ViewBll.h"
#include "foundation/bll/Odbpp_OrigFile_ViewBll.h"
#include "tests/records/support/RandomRecords.h"

namespace KODMS::Tests {

using namespace DataLib;
using Services::RecordContext;

namespace {

QString timeOf(int id)
{
    return QStringLiteral("2026-11-01T00:%1:%2.000Z")
        .arg(id / 60, 2, 10, QLatin1Char('0'))
        .arg(id % 60, 2, 10, QLatin1Char('0'));
}

QPair<QString, QVariant> column(const char *name, const QVariant &value)
{
    return {QLatin1String(name), value};
}

} // namespace

Model::DB_Search condition(const char *field, const std::string &value, bool fuzzy)
{
    Model::DB_Search record;
    record.fieldName = field;
    record.value = value;
    record.fuzzy = fuzzy ? 1 : 0;
    return record;
}

ViewFixture::ViewFixture() : m_context(std::make_unique<RecordContext>(m_temp.take()))
{
    RecordContext::setCurrent(m_context.get());
    addUser(1, QStringLiteral("管理员"));
    actAs(1, {Services::Role::Admin});
    insertRow(database(), "customers",
              {column("id", 1), column("code", QStringLiteral("A1B")),
               column("short_name", QStringLiteral("深圳华信电子")),
               column("superior_1", QStringLiteral("华信集团")),
               column("superior_2", QStringLiteral("深圳分公司")),
               column("create_time", timeOf(0))});
}

void ViewFixture::actAs(int userId, const Services::RoleSet &roles)
{
    Services::Actor actor;
    actor.userId = userId;
    actor.roles = roles;
    m_context->setActor(actor);
}

void ViewFixture::addUser(int id, const QString &realName)
{
    insertRow(database(), "users",
              {column("id", id), column("login_name", QStringLiteral("user%1").arg(id)),
               column("real_name", realName), column("create_time", timeOf(0))});
}

void ViewFixture::addFlow(int id, const QString &jobName, const QString &origName)
{
    const QString guid = QStringLiteral("%1").arg(id, 32, 16, QLatin1Char('0'));
    insertRow(database(), "jobs",
              {column("name", jobName), column("customer_id", 1), column("serial_number", id),
               column("create_user_id", 1), column("create_time", timeOf(id))});
    insertRow(database(), "orig_files",
              {column("id", id), column("guid", guid),
               column("stored_name", QStringLiteral("stored%1.tgz").arg(id)),
               column("file_type", QStringLiteral("tgz")), column("create_time", timeOf(id))});
    insertRow(database(), "job_flows",
              {column("id", id), column("guid", guid), column("job_name", jobName),
               column("orig_file_id", id), column("create_user_id", 1),
               column("create_time", timeOf(id))});
    insertRow(database(), "job_compress",
              {column("id", id), column("flow_id", id), column("customer_id", 1),
               column("serial_number", id), column("orig_name", origName),
               column("orig_file_id", id), column("flow_create_time", timeOf(id)),
               column("create_time", timeOf(id)), column("update_time", timeOf(id))});
}

void ViewFixture::set(const char *table, int id, const char *name, const QVariant &value)
{
    Services::SqlQuery query = database().prepare(
        QStringLiteral("UPDATE %1 SET %2 = :value WHERE %3 = :id")
            .arg(QLatin1String(table), QLatin1String(name),
                 QLatin1String(qstrcmp(table, "orders") == 0 ? "flow_id" : "id")));
    query.bind(":value", value).bind(":id", id).exec();
}

void ViewFixture::assign(const char *table, int flowId, int userId)
{
    insertRow(database(), table,
              {column("flow_id", flowId), column("executor_id", userId),
               column("assign_time", timeOf(flowId))});
}

bool ViewFixture::searchFlows(List conditions, List countConditions)
{
    if (countConditions.empty())
        countConditions = conditions;
    return BLL::Odbpp_Flow_ViewBll().selectAndCountBySearchModel(conditions, countConditions, flows,
                                                                 total);
}

bool ViewFixture::searchOrigFiles(List conditions, List countConditions)
{
    if (countConditions.empty())
        countConditions = conditions;
    return BLL::Odbpp_OrigFile_ViewBll().selectAndCountBySearchModel(conditions, countConditions,
                                                                     origFiles, total);
}

QVector<int> ViewFixture::flowIds() const
{
    QVector<int> ids;
    for (const auto &row : flows)
        ids << row.id;
    return ids;
}

QVector<int> ViewFixture::origFileIds() const
{
    QVector<int> ids;
    for (const auto &row : origFiles)
        ids << row.id;
    return ids;
}

} // namespace KODMS::Tests
