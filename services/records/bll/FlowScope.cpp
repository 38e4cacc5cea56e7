// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/FlowScope.h"

#include "services/records/Database.h"
#include "services/records/ViewScope.h"

namespace KODMS::Services {

namespace {

bool isShown(Database &database, const QString &view, const ViewScope &scope, const Actor &actor,
             int flowId)
{
    QString sql = QStringLiteral("SELECT 1 FROM ") + view + QStringLiteral(" WHERE Flow_Id = ?");
    if (!scope.isEverything)
        sql += QStringLiteral(" AND (") + scope.fields.join(QStringLiteral(" = ? OR ")) +
               QStringLiteral(" = ?)");
    SqlQuery query = database.prepare(sql);
    query.bind(0, flowId);
    for (int i = 0; i < scope.fields.size(); ++i)
        query.bind(i + 1, actor.userId);
    return query.exec().next();
}

} // namespace

bool isFlowInScope(Database &database, const Actor &actor, int flowId)
{
    return isShown(database, QStringLiteral("flow_view"), ViewScope::ofFlowView(actor), actor,
                   flowId) ||
           isShown(database, QStringLiteral("orig_file_view"), ViewScope::ofOrigFileView(actor),
                   actor, flowId);
}

} // namespace KODMS::Services
