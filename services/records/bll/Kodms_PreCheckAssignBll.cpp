// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Kodms_PreCheckAssignBll.h"

#include "services/records/bll/Assignment.h"

#include <QCoreApplication>

namespace KODMS::DataLib::BLL {

using namespace Services;

namespace {

constexpr Operation assign{"assignment.s_PreCheckAssign",
                           QT_TRANSLATE_NOOP("Change", "指派审核人")};
constexpr Operation reassign{"assignment.Update_PreCheckAssign",
                             QT_TRANSLATE_NOOP("Change", "重新指派审核人")};

} // namespace

bool Kodms_PreCheckAssignBll::s_PreCheckAssign(std::string flowGuid, int currentUserId,
                                               int assigneeId)
{
    return Change::run(assign, flowGuid, [&](Change &change) {
        change.actsAs(currentUserId);
        change.needs(preCheckAssignment.right);
        assignFirst(change, preCheckAssignment, change.flowByGuid(flowGuid), assigneeId);
    });
}

bool Kodms_PreCheckAssignBll::Update_PreCheckAssign(std::string flowGuid, int currentUserId,
                                                    int assigneeId)
{
    return Change::run(reassign, flowGuid, [&](Change &change) {
        change.actsAs(currentUserId);
        change.needs(preCheckAssignment.right);
        assignAgain(change, preCheckAssignment, change.flowByGuid(flowGuid), assigneeId);
    });
}

} // namespace KODMS::DataLib::BLL
