// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/Assignment.h"

#include "services/records/Database.h"
#include "services/records/TimeText.h"
#include "services/records/bll/UserRecords.h"

#include <QCoreApplication>

namespace KODMS::Services {

const AssignmentKind origFileAssignment{Right::AssignOrigFile, &FlowRow::executorId,
                                        "set_orig_file_assign"};
const AssignmentKind preCheckAssignment{Right::AssignPreCheck, &FlowRow::checkerId,
                                        "set_pre_check_assign"};

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Change", text);
}

QString nameOf(Change &change, int userId)
{
    const auto user = UserRecords(change.database()).byId(userId);
    return user ? user->realName : QString();
}

void write(Change &change, const AssignmentKind &kind, const FlowRow &flow, const UserRow &assignee)
{
    change.database()
        .query(kind.setStatement)
        .bind(":flow", flow.id)
        .bind(":assignee", assignee.id)
        .bind(":user", change.actor().userId)
        .bind(":time", storedNow())
        .exec();
    change.database().query("touch_flow_assignment").bind(":flow", flow.id).exec();
    change.audit(nameOf(change, flow.*kind.present), assignee.realName);
    change.wrote(flow, FieldGroup::Assignment);
}

UserRow activeUser(Change &change, int userId)
{
    const auto user = UserRecords(change.database()).byId(userId);
    if (!user || user->disabled)
        Change::fail(QStringLiteral("user %1 is not there or disabled").arg(userId),
                     tr("被指派人不存在或已停用"));
    return *user;
}

void refuseSecond(Change &change, int presentId)
{
    Change::refuse(QStringLiteral("user %1 is assigned already").arg(presentId),
                   tr("已指派给 %1，请刷新后再试").arg(nameOf(change, presentId)));
}

} // namespace

void assignFirst(Change &change, const AssignmentKind &kind, const FlowRow &flow, int assigneeId)
{
    change.needsUnchanged(flow, FieldGroup::Assignment);
    const UserRow assignee = activeUser(change, assigneeId);
    const int present = flow.*kind.present;
    if (present == assignee.id)
        return;
    if (present != 0)
        refuseSecond(change, present);
    write(change, kind, flow, assignee);
}

void assignAgain(Change &change, const AssignmentKind &kind, const FlowRow &flow, int assigneeId)
{
    change.needsUnchanged(flow, FieldGroup::Assignment);
    const UserRow assignee = activeUser(change, assigneeId);
    if (flow.*kind.present != assignee.id)
        write(change, kind, flow, assignee);
}

} // namespace KODMS::Services
