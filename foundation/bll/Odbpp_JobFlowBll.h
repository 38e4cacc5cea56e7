// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "foundation/model/Odbpp_JobFlow.h"

#include <map>
#include <string>
#include <vector>

namespace KODMS::DataLib::BLL {

/// Job flows: state, remark, files, review times.
/// Made on the stack for one action; every call is synchronous, on the GUI thread.
/// A failure returns false, is logged and raised as a notice.
class KODMS_SERVICES_API Odbpp_JobFlowBll {
public:
    /// The flows that meet all conditions, for example {"FlowGUID": guid}.
    /// Nothing found: true and no rows. Unknown key: false.
    bool select(const std::map<std::string, std::string> &textConditions,
                const std::map<std::string, int> &numberConditions,
                std::vector<Model::Odbpp_JobFlow> &rows);

    /// The flow with this GUID; not persistent when there is none.
    Model::Odbpp_JobFlow getFlowByGuid(std::string flowGuid);

    /// Moves the flow to (flowStatus, checkFlag) when the job's life allows it.
    bool UpdateState(int userId, int flowStatus, int checkFlag, std::string flowGuid);

    /// Replaces the flow's remark.
    bool UpdateTips(int userId, std::string tips, std::string flowGuid);

    /// Points the flow, and its row of the original-file desk, at another stored
    /// original file. An unknown file GUID is refused.
    bool UpdateOrigFileGuid(std::string origFileGuid, std::string flowGuid);

    /// Names the stored file that was imported last: a GUID or a stored name.
    bool UpdateLastOdbppImportMongoFsGuid(std::string fileGuid, std::string flowGuid);

    /// Stamps who imported, reviewed or reviewed the robot's result, and when.
    /// A user id of 0 leaves its pair unchanged; an id with an empty time stamps
    /// the present time. Times are UTC, ISO 8601.
    bool UpdatePreImportOrCheckTime(std::string flowGuid, int actingUserId, int importUserId,
                                    std::string importTime, int checkUserId, std::string checkTime,
                                    int robotCheckUserId, std::string robotCheckTime);
};

} // namespace KODMS::DataLib::BLL
