// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Kodms_OrigFileAssignBll.h"

#include "services/records/bll/Assignment.h"

#include <QCoreApplication>

namespace KODMS::DataLib::BLL {

using namespace Services;

namespace {

constexpr Operation assign{"assignment.AssignOrigFile",
                           QT_TRANSLATE_NOOP("Change", "指派前处理人")};
constexpr Operation reassign{"assignment.AssignOrigFileUpdate",
                             QT_TRANSLATE_NOOP("Change", "重新指派前处理人")};

} // namespace

bool Kodms_OrigFileAssignBll::AssignOrigFile(int origFileId, int currentUserId,
                                             std::string flowGuid, int recordingUserId,
                                             int assigneeId)
{
    return Change::run(assign, flowGuid, [&](Change &change) {
        change.actsAs(currentUserId);
        change.actsAs(recordingUserId);
        change.needs(origFileAssignment.right);
        const FlowRow flow = change.flowByGuid(flowGuid);
        if (flow.jobCompressId != origFileId)
            Change::fail(QStringLiteral("row %1 is of another flow").arg(origFileId),
                         QCoreApplication::translate("Change", "该记录与流程不符"));
        assignFirst(change, origFileAssignment, flow, assigneeId);
    });
}

bool Kodms_OrigFileAssignBll::AssignOrigFileUpdate(int currentUserId, std::string flowGuid,
                                                   int assigneeId)
{
    return Change::run(reassign, flowGuid, [&](Change &change) {
        change.actsAs(currentUserId);
        change.needs(origFileAssignment.right);
        assignAgain(change, origFileAssignment, change.flowByGuid(flowGuid), assigneeId);
    });
}

} // namespace KODMS::DataLib::BLL
