// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/common/DBS_API.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;

namespace KODMS::DBS_API {

bool kodms_update_flow_status(std::string jobName, int flowStatus, int checkFlag)
{
    return FakeServices::instance().answer("DBS_API::kodms_update_flow_status", jobName, flowStatus,
                                           checkFlag) != 0;
}

std::string getWebRobotParaByJobName(std::string jobName)
{
    auto &services = FakeServices::instance();
    return services.robotParameters.take(
        services.record("DBS_API::getWebRobotParaByJobName", jobName));
}

} // namespace KODMS::DBS_API
