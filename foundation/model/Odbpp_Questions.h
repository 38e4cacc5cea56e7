// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/BaseInt.h"

#include <string>

namespace KODMS::DataLib::Model {

/// One question raised on a job.
struct Odbpp_Questions : BaseInt {
    int jobId = 0; ///< id of the flow that the question belongs to
    std::string title;
    std::string description;
    int checkFlag = 0; ///< 0 to 3, see questionCheckText()
};

} // namespace KODMS::DataLib::Model
