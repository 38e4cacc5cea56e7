// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <string>

namespace KODMS::DataLib::BLL {

/// Who reviews a job flow.
/// Made on the stack for one action; every call is synchronous, on the GUI thread.
/// A failure returns false, is logged and raised as a notice.
class KODMS_SERVICES_API Kodms_PreCheckAssignBll {
public:
    /// First assignment of a pre-checker.
    bool s_PreCheckAssign(std::string flowGuid, int currentUserId, int assigneeId);

    /// Changes the pre-checker of an assigned flow.
    bool Update_PreCheckAssign(std::string flowGuid, int currentUserId, int assigneeId);
};

} // namespace KODMS::DataLib::BLL
