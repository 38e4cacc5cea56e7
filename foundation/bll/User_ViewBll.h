// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "foundation/model/User_View.h"

#include <map>
#include <string>
#include <vector>

namespace KODMS::DataLib::BLL {

/// Users, for the assignee combo boxes.
/// Made on the stack for one action; every call is synchronous, on the GUI thread.
/// A failure returns false, is logged and raised as a notice.
class KODMS_SERVICES_API User_ViewBll {
public:
    /// The active users that meet all conditions, by name; two empty maps give all.
    bool select(const std::map<std::string, std::string> &textConditions,
                const std::map<std::string, int> &numberConditions,
                std::vector<Model::User_View> &rows);
};

} // namespace KODMS::DataLib::BLL
