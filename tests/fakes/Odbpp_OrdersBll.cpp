// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_OrdersBll.h"

#include "tests/fakes/FakeServices.h"

using KODMS::Fakes::FakeServices;

namespace KODMS::DataLib::BLL {

Model::Odbpp_Orders Odbpp_OrdersBll::getOrdersByFlowGuid(std::string flowGuid)
{
    auto &services = FakeServices::instance();
    return services.orders.take(services.record("Odbpp_OrdersBll::getOrdersByFlowGuid", flowGuid));
}

} // namespace KODMS::DataLib::BLL
