// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_JobBll.h"

#include "services/records/bll/FlowChanges.h"

namespace KODMS::DataLib::BLL {

bool Odbpp_JobBll::UpdateCheckFlag(int userId, int preCheckFlag, int checkFlag, std::string jobName,
                                   int flowId)
{
    return Services::FlowChanges::setVerdict(userId, preCheckFlag, checkFlag, jobName, flowId);
}

} // namespace KODMS::DataLib::BLL
