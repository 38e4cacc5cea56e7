// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/OrderPayment.h"

#include "foundation/bll/Odbpp_OrdersBll.h"

#include <QString>

namespace KODMS::UI {

bool isOrderPaid(const QString &flowGuid)
{
    return DataLib::BLL::Odbpp_OrdersBll().getOrdersByFlowGuid(flowGuid.toStdString()).payment != 0;
}

} // namespace KODMS::UI
