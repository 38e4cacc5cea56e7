// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_JobFlowBll.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;

namespace KODMS::DataLib::BLL {

bool Odbpp_JobFlowBll::select(const std::map<std::string, std::string> &textConditions,
                              const std::map<std::string, int> &numberConditions,
                              std::vector<Model::Odbpp_JobFlow> &rows)
{
    auto &services = FakeServices::instance();
    auto found = services.jobFlows.take(
        services.record("Odbpp_JobFlowBll::select", textConditions, numberConditions));
    rows.insert(rows.end(), found.rows.begin(), found.rows.end());
    return found.ok;
}

Model::Odbpp_JobFlow Odbpp_JobFlowBll::getFlowByGuid(std::string flowGuid)
{
    auto &services = FakeServices::instance();
    return services.flowByGuid.take(services.record("Odbpp_JobFlowBll::getFlowByGuid", flowGuid));
}

bool Odbpp_JobFlowBll::UpdateState(int userId, int flowStatus, int checkFlag, std::string flowGuid)
{
    return FakeServices::instance().answer("Odbpp_JobFlowBll::UpdateState", userId, flowStatus,
                                           checkFlag, flowGuid) != 0;
}

bool Odbpp_JobFlowBll::UpdateTips(int userId, std::string tips, std::string flowGuid)
{
    return FakeServices::instance().answer("Odbpp_JobFlowBll::UpdateTips", userId, tips,
                                           flowGuid) != 0;
}

bool Odbpp_JobFlowBll::UpdateOrigFileGuid(std::string origFileGuid, std::string flowGuid)
{
    return FakeServices::instance().answer("Odbpp_JobFlowBll::UpdateOrigFileGuid", origFileGuid,
                                           flowGuid) != 0;
}

bool Odbpp_JobFlowBll::UpdateLastOdbppImportMongoFsGuid(std::string fileGuid, std::string flowGuid)
{
    return FakeServices::instance().answer("Odbpp_JobFlowBll::UpdateLastOdbppImportMongoFsGuid",
                                           fileGuid, flowGuid) != 0;
}

bool Odbpp_JobFlowBll::UpdatePreImportOrCheckTime(std::string flowGuid, int actingUserId,
                                                  int importUserId, std::string importTime,
                                                  int checkUserId, std::string checkTime,
                                                  int robotCheckUserId, std::string robotCheckTime)
{
    return FakeServices::instance().answer("Odbpp_JobFlowBll::UpdatePreImportOrCheckTime", flowGuid,
                                           actingUserId, importUserId, importTime, checkUserId,
                                           checkTime, robotCheckUserId, robotCheckTime) != 0;
}

} // namespace KODMS::DataLib::BLL
