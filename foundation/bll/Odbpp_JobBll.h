// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <string>

namespace KODMS::DataLib::BLL {

/// Jobs.
/// Made on the stack for one action; every call is synchronous, on the GUI thread.
/// A failure returns false, is logged and raised as a notice.
class KODMS_SERVICES_API Odbpp_JobBll {
public:
    /// Stores a verdict on the job: 1 = failed, 2 = passed. Refused when the
    /// flow's state does not allow the verdict.
    bool UpdateCheckFlag(int userId, int preCheckFlag, int checkFlag, std::string jobName,
                         int flowId);
};

} // namespace KODMS::DataLib::BLL
