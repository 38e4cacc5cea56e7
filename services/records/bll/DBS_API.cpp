// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/common/DBS_API.h"

#include "services/records/Database.h"
#include "services/records/bll/FlowChanges.h"
#include "services/records/bll/RecordRead.h"
#include "services/records/bll/TextArgument.h"

#include <QCoreApplication>

namespace KODMS::DBS_API {

using namespace Services;

namespace {

constexpr Operation selectRobotParams{"job.getWebRobotParaByJobName",
                                      QT_TRANSLATE_NOOP("Change", "查询机器人参数")};

} // namespace

bool kodms_update_flow_status(std::string jobName, int flowStatus, int checkFlag)
{
    return FlowChanges::finish(jobName, {flowStatus, checkFlag});
}

std::string getWebRobotParaByJobName(std::string jobName)
{
    QString params;
    const bool found = readRecords(selectRobotParams, jobName, [&](Database &database) {
        SqlQuery query = database.query("select_robot_params");
        query.bind(":name", Change::text(jobName, LongestName)).exec();
        if (query.next())
            params = query.text("params");
    });
    return found ? params.toStdString() : std::string();
}

} // namespace KODMS::DBS_API
