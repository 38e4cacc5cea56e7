// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_JobCompressBll.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;

namespace KODMS::DataLib::BLL {

bool Odbpp_JobCompressBll::DelOrigFile(int id, std::string uuid, std::string flowGuid)
{
    return FakeServices::instance().answer("Odbpp_JobCompressBll::DelOrigFile", id, uuid,
                                           flowGuid) != 0;
}

bool Odbpp_JobCompressBll::UpdateZipUUID_OrigName(int id, std::string storedName, int userId,
                                                  std::string origName)
{
    return FakeServices::instance().answer("Odbpp_JobCompressBll::UpdateZipUUID_OrigName", id,
                                           storedName, userId, origName) != 0;
}

} // namespace KODMS::DataLib::BLL
