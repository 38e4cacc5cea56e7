// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/Right.h"

namespace KODMS::Services {

bool carriesRight(const RoleSet &roles, Right right)
{
    switch (right) {
    case Right::ChangeFiles:
        return roles.hasAnyOf({Role::Admin, Role::OrigFileUpdate});
    case Right::AssignOrigFile:
        return roles.hasAnyOf({Role::Admin, Role::OrigFileAssign});
    case Right::AssignPreCheck:
        return roles.hasAnyOf({Role::Admin, Role::PreCheckAssign});
    case Right::Verdict:
        return roles.hasAnyOf({Role::Admin, Role::CheckAuthority});
    case Right::RobotState:
        return roles.has(Role::Robot);
    case Right::Import:
    case Right::Fetch:
        return roles.has(Role::Admin);
    case Right::Question:
    case Right::Remark:
    case Right::Finish:
        break;
    }
    return false;
}

bool isRightInScope(Right right)
{
    switch (right) {
    case Right::Import:
    case Right::Fetch:
    case Right::Question:
    case Right::Remark:
    case Right::Finish:
        return true;
    default:
        return false;
    }
}

} // namespace KODMS::Services
