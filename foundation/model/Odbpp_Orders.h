// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/BaseInt.h"

#include <string>

namespace KODMS::DataLib::Model {

/// The order of a job flow. Not persistent (id 0) when the flow has none.
struct Odbpp_Orders : BaseInt {
    std::string flowGuid;
    int payment = 0;    ///< 0 = unpaid
    std::string suffix; ///< type of what the customer sent with the order
};

} // namespace KODMS::DataLib::Model
