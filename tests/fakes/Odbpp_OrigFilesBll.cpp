// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_OrigFilesBll.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;

namespace KODMS::DataLib::BLL {

bool Odbpp_OrigFilesBll::inputOrigFile(std::string guid, std::string baseName,
                                       std::string storedName, std::string fileType,
                                       std::string customerCode, int state, int userId)
{
    return FakeServices::instance().answer("Odbpp_OrigFilesBll::inputOrigFile", guid, baseName,
                                           storedName, fileType, customerCode, state, userId) != 0;
}

} // namespace KODMS::DataLib::BLL
