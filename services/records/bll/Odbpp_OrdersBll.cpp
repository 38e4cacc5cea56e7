// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_OrdersBll.h"

#include "services/records/Database.h"
#include "services/records/bll/FlowRecords.h"
#include "services/records/bll/RecordRead.h"
#include "services/records/bll/TextArgument.h"

#include <QCoreApplication>

namespace KODMS::DataLib::BLL {

using namespace Services;

namespace {

constexpr Operation selectOrder{"order.getOrdersByFlowGuid",
                                QT_TRANSLATE_NOOP("Change", "查询订单")};

} // namespace

Model::Odbpp_Orders Odbpp_OrdersBll::getOrdersByFlowGuid(std::string flowGuid)
{
    Model::Odbpp_Orders order;
    readRecords(selectOrder, flowGuid, [&](Database &database) {
        const auto flow = FlowRecords(database).byGuid(Change::text(flowGuid, LongestName));
        if (!flow)
            return;
        SqlQuery query = database.query("select_order_by_flow");
        query.bind(":flow", flow->id).exec();
        if (!query.next())
            return;
        order.id = query.number("id");
        order.flowGuid = flow->guid.toStdString();
        order.payment = query.number("payment");
        order.suffix = query.text("suffix").toStdString();
    });
    return order;
}

} // namespace KODMS::DataLib::BLL
