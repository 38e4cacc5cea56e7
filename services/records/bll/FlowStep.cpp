// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/FlowStep.h"

#include "services/records/Database.h"
#include "services/records/bll/Change.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Change", text);
}

} // namespace

QString stateText(FlowState state)
{
    return QStringLiteral("%1,%2").arg(state.status).arg(state.flag);
}

void requireStep(Transitions::Answer answer, FlowState from, FlowState to)
{
    const QString step = stateText(from) + QStringLiteral(" -> ") + stateText(to);
    switch (answer) {
    case Transitions::Answer::Allowed:
        return;
    case Transitions::Answer::NotPossible:
        Change::refuse(QStringLiteral("no such step: ") + step, tr("当前状态不允许此操作"));
    case Transitions::Answer::NotYet:
        Change::refuse(QStringLiteral("too early: ") + step, tr("此操作的前提尚未满足"));
    case Transitions::Answer::NotThisPerson:
        Change::refuse(QStringLiteral("not for this user: ") + step, tr("您没有该权限"));
    }
}

void writeFlowState(Change &change, const FlowRow &flow, FlowState to)
{
    constexpr FlowState atRobot{2, 0};
    change.database()
        .query("update_flow_state")
        .bind(":status", to.status)
        .bind(":flag", to.flag)
        .bind(":flow", flow.id)
        .exec();
    if (to == atRobot)
        change.database().query("clear_flow_result").bind(":flow", flow.id).exec();
    change.audit(stateText(flow.state), stateText(to));
    change.wrote(flow, FieldGroup::State);
}

} // namespace KODMS::Services
