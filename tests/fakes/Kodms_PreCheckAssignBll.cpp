// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Kodms_PreCheckAssignBll.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;

namespace KODMS::DataLib::BLL {

bool Kodms_PreCheckAssignBll::s_PreCheckAssign(std::string flowGuid, int currentUserId,
                                               int assigneeId)
{
    return FakeServices::instance().answer("Kodms_PreCheckAssignBll::s_PreCheckAssign", flowGuid,
                                           currentUserId, assigneeId) != 0;
}

bool Kodms_PreCheckAssignBll::Update_PreCheckAssign(std::string flowGuid, int currentUserId,
                                                    int assigneeId)
{
    return FakeServices::instance().answer("Kodms_PreCheckAssignBll::Update_PreCheckAssign",
                                           flowGuid, currentUserId, assigneeId) != 0;
}

} // namespace KODMS::DataLib::BLL
