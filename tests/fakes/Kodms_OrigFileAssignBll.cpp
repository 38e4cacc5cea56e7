// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Kodms_OrigFileAssignBll.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;

namespace KODMS::DataLib::BLL {

bool Kodms_OrigFileAssignBll::AssignOrigFile(int origFileId, int currentUserId,
                                             std::string flowGuid, int recordingUserId,
                                             int assigneeId)
{
    return FakeServices::instance().answer("Kodms_OrigFileAssignBll::AssignOrigFile", origFileId,
                                           currentUserId, flowGuid, recordingUserId,
                                           assigneeId) != 0;
}

bool Kodms_OrigFileAssignBll::AssignOrigFileUpdate(int currentUserId, std::string flowGuid,
                                                   int assigneeId)
{
    return FakeServices::instance().answer("Kodms_OrigFileAssignBll::AssignOrigFileUpdate",
                                           currentUserId, flowGuid, assigneeId) != 0;
}

} // namespace KODMS::DataLib::BLL
