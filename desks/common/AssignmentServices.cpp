// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/AssignmentServices.h"

#include "foundation/bll/Kodms_OrigFileAssignBll.h"
#include "foundation/bll/Kodms_PreCheckAssignBll.h"
#include "foundation/ui/DMS_UICommon.h"

namespace KODMS::UI {

using DataLib::BLL::Kodms_OrigFileAssignBll;
using DataLib::BLL::Kodms_PreCheckAssignBll;

bool mayAssignPreCheckers()
{
    return DMS_UICommon::interface()->hasAdminRole() ||
           DMS_UICommon::interface()->hasPreCheckAssignRole();
}

bool mayAssignExecutors()
{
    return DMS_UICommon::interface()->hasOrigFileAssignRole() ||
           DMS_UICommon::interface()->hasAdminRole();
}

void assignPreChecker(const AssignedRow &row)
{
    Kodms_PreCheckAssignBll().s_PreCheckAssign(row.flowGuid, row.userId, row.assigneeId);
}

void reassignPreChecker(const AssignedRow &row)
{
    Kodms_PreCheckAssignBll().Update_PreCheckAssign(row.flowGuid, row.userId, row.assigneeId);
}

/// Who assigns is also the one who records.
void assignExecutor(const AssignedRow &row)
{
    Kodms_OrigFileAssignBll().AssignOrigFile(row.fileId, row.userId, row.flowGuid, row.userId,
                                             row.assigneeId);
}

void reassignExecutor(const AssignedRow &row)
{
    Kodms_OrigFileAssignBll().AssignOrigFileUpdate(row.userId, row.flowGuid, row.assigneeId);
}

} // namespace KODMS::UI
