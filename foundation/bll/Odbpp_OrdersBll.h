// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "foundation/model/Odbpp_Orders.h"

#include <string>

namespace KODMS::DataLib::BLL {

/// Orders.
/// Made on the stack for one action; every call is synchronous, on the GUI thread.
/// A failure returns false, is logged and raised as a notice.
class KODMS_SERVICES_API Odbpp_OrdersBll {
public:
    /// The order of a flow; not persistent when there is none.
    Model::Odbpp_Orders getOrdersByFlowGuid(std::string flowGuid);
};

} // namespace KODMS::DataLib::BLL
