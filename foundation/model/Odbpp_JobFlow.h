// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/BaseInt.h"

#include <string>

namespace KODMS::DataLib::Model {

/// One job flow. Not persistent (id 0) when it was asked for and not found.
struct Odbpp_JobFlow : BaseInt {
    std::string jobName;
    std::string flowGuid;
    int flowStatus = 0;
    int checkFlag = 0;
    int createUserId = 0;
    std::string origFileGuid; ///< GUID of the original file in force
};

} // namespace KODMS::DataLib::Model
