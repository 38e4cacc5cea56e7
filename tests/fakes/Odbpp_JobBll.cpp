// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_JobBll.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;

namespace KODMS::DataLib::BLL {

bool Odbpp_JobBll::UpdateCheckFlag(int userId, int preCheckFlag, int checkFlag, std::string jobName,
                                   int flowId)
{
    return FakeServices::instance().answer("Odbpp_JobBll::UpdateCheckFlag", userId, preCheckFlag,
                                           checkFlag, jobName, flowId) != 0;
}

} // namespace KODMS::DataLib::BLL
