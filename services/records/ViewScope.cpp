// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/ViewScope.h"

namespace KODMS::Services {

ViewScope ViewScope::ofFlowView(const Actor &actor)
{
    if (actor.roles.hasAnyOf({Role::Admin, Role::TestAdmin}))
        return {true, {}};
    return {false,
            {QStringLiteral("Flow_CreateUserId"), QStringLiteral("Flow_LastOdbppImportUserId"),
             QStringLiteral("JobTable_CreateUserId"), QStringLiteral("OFAssign_ExecutorId"),
             QStringLiteral("PCAssign_ExecutorId")}};
}

ViewScope ViewScope::ofOrigFileView(const Actor &actor)
{
    if (actor.roles.hasAnyOf({Role::Admin, Role::TestAdmin, Role::ShowCompanyName}))
        return {true, {}};
    return {false, {QStringLiteral("PreUser_id")}};
}

} // namespace KODMS::Services
