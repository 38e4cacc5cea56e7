// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/FlowRecords.h"

#include "services/records/Database.h"

namespace KODMS::Services {

namespace {

FlowStamp stampOf(const SqlQuery &query, const char *user, const char *time)
{
    return {query.number(user), query.text(time)};
}

void readFiles(const SqlQuery &query, FlowRow &flow)
{
    flow.origFileId = query.number("orig_file_id");
    flow.origFileGuid = query.text("orig_file_guid");
    flow.origStoredName = query.text("orig_stored_name");
    flow.importFileId = query.number("last_import_file_id");
    flow.importStoredName = query.text("import_stored_name");
    flow.importType = query.text("import_type");
    flow.resultFileId = query.number("result_file_id");
    flow.jobCompressId = query.number("job_compress_id");
}

void readPeople(const SqlQuery &query, FlowRow &flow)
{
    flow.createUserId = query.number("create_user_id");
    flow.import = stampOf(query, "last_import_user_id", "last_import_time");
    flow.check = stampOf(query, "check_user_id", "check_time");
    flow.robotCheck = stampOf(query, "robot_check_user_id", "robot_check_time");
    flow.executorId = query.number("executor_id");
    flow.checkerId = query.number("checker_id");
}

std::optional<FlowRow> firstRow(SqlQuery &query)
{
    if (!query.exec().next())
        return std::nullopt;
    FlowRow flow;
    flow.id = query.number("id");
    flow.guid = query.text("guid");
    flow.jobName = query.text("job_name");
    flow.origJobName = query.text("orig_job_name");
    flow.customerCode = query.text("customer_code");
    flow.state = {query.number("flow_status"), query.number("check_flag")};
    flow.tips = query.text("tips");
    flow.versions = {query.number("state_version"), query.number("file_version"),
                     query.number("assignment_version"), query.number("remark_version")};
    readFiles(query, flow);
    readPeople(query, flow);
    return flow;
}

} // namespace

std::optional<FlowRow> FlowRecords::byGuid(const QString &guid)
{
    SqlQuery query = m_database.query("select_flow_by_guid");
    return firstRow(query.bind(":guid", guid));
}

std::optional<FlowRow> FlowRecords::byId(int id)
{
    SqlQuery query = m_database.query("select_flow_by_id");
    return firstRow(query.bind(":id", id));
}

std::optional<FlowRow> FlowRecords::byJobName(const QString &jobName)
{
    SqlQuery query = m_database.query("select_flow_by_job_name");
    return firstRow(query.bind(":name", jobName));
}

} // namespace KODMS::Services
