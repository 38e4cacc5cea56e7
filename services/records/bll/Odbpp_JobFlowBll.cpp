// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_JobFlowBll.h"

#include "services/records/Database.h"
#include "services/records/bll/FlowChanges.h"
#include "services/records/bll/KeyConditions.h"
#include "services/records/bll/RecordRead.h"
#include "services/records/bll/TextArgument.h"

#include <QCoreApplication>

namespace KODMS::DataLib::BLL {

using namespace Services;

namespace {

constexpr Operation selectFlows{"flow.select", QT_TRANSLATE_NOOP("Change", "查询流程")};

const std::vector<KeyConditions::Key> keys{{"FlowGUID", "f.guid", false},
                                           {"JobName", "f.job_name", false},
                                           {"OrigFileGuid", "o.guid", false},
                                           {"Id", "f.id", true},
                                           {"FlowStatus", "f.flow_status", true},
                                           {"CheckFlag", "f.check_flag", true},
                                           {"CreateUserId", "f.create_user_id", true}};

Model::Odbpp_JobFlow recordOf(const SqlQuery &query)
{
    Model::Odbpp_JobFlow flow;
    flow.id = query.number("id");
    flow.jobName = query.text("job_name").toStdString();
    flow.flowGuid = query.text("guid").toStdString();
    flow.flowStatus = query.number("flow_status");
    flow.checkFlag = query.number("check_flag");
    flow.createUserId = query.number("create_user_id");
    flow.origFileGuid = query.text("orig_file_guid").toStdString();
    return flow;
}

} // namespace

bool Odbpp_JobFlowBll::select(const std::map<std::string, std::string> &textConditions,
                              const std::map<std::string, int> &numberConditions,
                              std::vector<Model::Odbpp_JobFlow> &rows)
{
    rows.clear();
    return readRecords(selectFlows, {}, [&](Database &database) {
        const KeyConditions conditions(keys, textConditions, numberConditions);
        SqlQuery query = database.prepare(
            QStringLiteral("SELECT f.id, f.job_name, f.guid, f.flow_status, f.check_flag, "
                           "f.create_user_id, o.guid AS orig_file_guid FROM job_flows f "
                           "LEFT JOIN orig_files o ON o.id = f.orig_file_id WHERE 1 = 1") +
            conditions.andSql() + QStringLiteral(" ORDER BY f.id"));
        conditions.bindTo(query);
        query.exec();
        while (query.next())
            rows.push_back(recordOf(query));
    });
}

Model::Odbpp_JobFlow Odbpp_JobFlowBll::getFlowByGuid(std::string flowGuid)
{
    std::vector<Model::Odbpp_JobFlow> rows;
    const bool found = select({{"FlowGUID", flowGuid}}, {}, rows) && !rows.empty();
    return found ? rows.front() : Model::Odbpp_JobFlow();
}

bool Odbpp_JobFlowBll::UpdateState(int userId, int flowStatus, int checkFlag, std::string flowGuid)
{
    return FlowChanges::moveTo(userId, {flowStatus, checkFlag}, flowGuid);
}

bool Odbpp_JobFlowBll::UpdateTips(int userId, std::string tips, std::string flowGuid)
{
    return FlowChanges::setRemark(userId, tips, flowGuid);
}

bool Odbpp_JobFlowBll::UpdateOrigFileGuid(std::string origFileGuid, std::string flowGuid)
{
    return FlowChanges::setOrigFile(origFileGuid, flowGuid);
}

bool Odbpp_JobFlowBll::UpdateLastOdbppImportMongoFsGuid(std::string fileGuid, std::string flowGuid)
{
    return FlowChanges::setLastImport(fileGuid, flowGuid);
}

bool Odbpp_JobFlowBll::UpdatePreImportOrCheckTime(std::string flowGuid, int actingUserId,
                                                  int importUserId, std::string importTime,
                                                  int checkUserId, std::string checkTime,
                                                  int robotCheckUserId, std::string robotCheckTime)
{
    return FlowChanges::stamp(
        flowGuid, actingUserId,
        {{importUserId, importTime}, {checkUserId, checkTime}, {robotCheckUserId, robotCheckTime}});
}

} // namespace KODMS::DataLib::BLL
