// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/DownloadRights.h"

#include "foundation/ui/DMS_UICommon.h"

namespace KODMS::UI {

bool isPrivileged()
{
    return DMS_UICommon::interface()->hasShowCompanyNameRole() ||
           DMS_UICommon::interface()->hasAdminRole() ||
           DMS_UICommon::interface()->hasTestAdminRole();
}

bool seesCustomerNames()
{
    return DMS_UICommon::interface()->hasShowCompanyNameRole() ||
           DMS_UICommon::interface()->hasAdminRole();
}

bool startsWithOrigFiles()
{
    return DMS_UICommon::interface()->hasTestAdminRole() ||
           DMS_UICommon::interface()->hasAdminRole();
}

bool mayChangeFiles()
{
    return DMS_UICommon::interface()->hasAdminRole() ||
           DMS_UICommon::interface()->hasOrigFileUpdateAuthority();
}

} // namespace KODMS::UI
