// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/Orders.h"

#include "services/api/internal/AdminChange.h"
#include "services/records/Database.h"
#include "services/records/TimeText.h"
#include "services/records/bll/FlowRecords.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Orders", text);
}

Outcome payOrderOf(AdminChange &change, const FlowRow &flow)
{
    SqlQuery order = change.database().query("select_order_by_flow");
    order.bind(":flow", flow.id).exec();
    if (!order.next())
        return Outcome::failure(tr("料号“%1”没有订单").arg(flow.jobName));
    if (order.number("payment") != 0)
        return Outcome::success();
    change.database()
        .query("update_order_paid")
        .bind(":time", storedNow())
        .bind(":order", order.number("id"))
        .exec();
    change.audit(QStringLiteral("flow"), flow.id, flow.jobName, QStringLiteral("unpaid"),
                 QStringLiteral("paid"));
    return Outcome::success();
}

} // namespace

Outcome Orders::pay(const QString &jobName)
{
    return AdminChange::run("order.pay", jobName, [&](AdminChange &change) {
        const auto flow = FlowRecords(change.database()).byJobName(jobName);
        if (!flow)
            return Outcome::failure(tr("没有名为“%1”的料号").arg(jobName));
        return payOrderOf(change, *flow);
    });
}

} // namespace KODMS::Services
