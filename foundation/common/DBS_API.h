// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <string>

namespace KODMS::DBS_API {

/// Moves the flow of a job to (flowStatus, checkFlag) as the signed-in user.
/// Used to finish a job: 3, 2. False when the transition or the user is refused.
KODMS_SERVICES_API bool kodms_update_flow_status(std::string jobName, int flowStatus,
                                                 int checkFlag);

/// The web robot's parameters of a job; empty when there are none.
KODMS_SERVICES_API std::string getWebRobotParaByJobName(std::string jobName);

} // namespace KODMS::DBS_API
