// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/FlowChanges.h"

#include "services/records/Database.h"
#include "services/records/RecordContext.h"
#include "services/records/TimeText.h"
#include "services/records/bll/Change.h"
#include "services/records/bll/FlowStep.h"
#include "services/records/bll/TextArgument.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

constexpr Operation updateState{"state.UpdateState", QT_TRANSLATE_NOOP("Change", "更改状态")};
constexpr Operation finishFlow{"state.kodms_update_flow_status",
                               QT_TRANSLATE_NOOP("Change", "完成流程")};
constexpr Operation updateVerdict{"state.UpdateCheckFlag",
                                  QT_TRANSLATE_NOOP("Change", "保存审核结果")};
constexpr Operation updateStamp{"state.UpdatePreImportOrCheckTime",
                                QT_TRANSLATE_NOOP("Change", "记录时间")};

constexpr int Failed = 1;
constexpr int Passed = 2;

QString tr(const char *text)
{
    return QCoreApplication::translate("Change", text);
}

/// The steps of a replacement do not look at each other's results; the step that
/// moves the flow on is the last, and is refused when the import before it was.
void refuseAfterFailedReplacement(Change &change, const FlowRow &flow, FlowState to)
{
    constexpr FlowState replaced{1, 2};
    SessionMemory *memory = change.memory();
    if (!memory || !memory->hasFailedReplacement(flow.guid))
        return;
    memory->replacementWorked(flow.guid);
    if (to == replaced)
        Change::refuse(QStringLiteral("the replacement before it was refused"),
                       tr("文件替换未成功，状态不变"));
}

/// The three steps of a verdict do not look at each other's results either: what comes
/// after a failed one would leave half a verdict.
void refuseRestOfVerdict(bool isRest)
{
    if (isRest)
        Change::refuse(QStringLiteral("the verdict's step before it was not made"),
                       tr("审核结果未保存，其余步骤不再进行"));
}

/// The session's memory, for what is remembered of a change that may not have begun.
SessionMemory *currentMemory()
{
    RecordContext *context = RecordContext::current();
    return context ? dynamic_cast<SessionMemory *>(context->shownRecords()) : nullptr;
}

void rememberMove(const std::string &flowGuid, bool isMoved)
{
    SessionMemory *memory = currentMemory();
    if (!memory)
        return;
    const QString guid = QString::fromStdString(flowGuid);
    if (isMoved)
        memory->moveWorked(guid);
    else
        memory->moveFailed(guid);
}

/// A stamp that may be made, as it is stored.
FlowStamp checkedStamp(const Change &change, const StampRequest &request)
{
    if (request.userId != change.actor().userId)
        Change::refuse(QStringLiteral("a stamp in the name of user %1").arg(request.userId),
                       tr("不能以他人名义记录"));
    if (request.time.empty())
        return {request.userId, storedNow()};
    const QString time = storedTimeFrom(Change::text(request.time, LongestName));
    if (time.isEmpty())
        Change::fail(QStringLiteral("not a time: ") + shortText(request.time), tr("时间格式无效"));
    return {request.userId, time};
}

QString textOf(const FlowStamp &stamp)
{
    return stamp.userId == 0 ? QString()
                             : QStringLiteral("%1 %2").arg(stamp.userId).arg(stamp.time);
}

void writeStamp(Change &change, const char *statement, const FlowRow &flow, const FlowStamp &before,
                const StampRequest &request)
{
    if (request.userId == 0)
        return;
    const FlowStamp stamp = checkedStamp(change, request);
    change.database()
        .query(statement)
        .bind(":user", stamp.userId)
        .bind(":time", stamp.time)
        .bind(":flow", flow.id)
        .exec();
    change.audit(textOf(before), textOf(stamp));
}

/// A review time belongs to a verdict: without one it would tell of a review that
/// was refused.
void requireReviewed(const FlowRow &flow)
{
    if (!Transitions::isReviewed(flow.state))
        Change::refuse(QStringLiteral("a review time without a verdict: ") + stateText(flow.state),
                       tr("没有审核结果，不能记录审核时间"));
}

QString flagsText(int preCheckFlag, int checkFlag)
{
    return QStringLiteral("%1,%2").arg(preCheckFlag).arg(checkFlag);
}

void writeVerdict(Change &change, const FlowRow &flow, int preCheckFlag, int checkFlag)
{
    SqlQuery before = change.database().query("select_job_flags");
    before.bind(":name", flow.jobName).exec();
    before.next();
    change.audit(flagsText(before.number("pre_check_flag"), before.number("check_flag")),
                 flagsText(preCheckFlag, checkFlag));
    change.database()
        .query("update_job_flags")
        .bind(":pre_flag", preCheckFlag)
        .bind(":flag", checkFlag)
        .bind(":name", flow.jobName)
        .exec();
    change.database().query("touch_flow_state").bind(":flow", flow.id).exec();
    change.wrote(flow, FieldGroup::State);
}

} // namespace

bool FlowChanges::moveTo(int userId, FlowState to, const std::string &flowGuid)
{
    const bool isMoved = Change::run(updateState, flowGuid, [&](Change &change) {
        change.actsAs(userId);
        const FlowRow flow = change.flowByGuid(flowGuid);
        change.needsUnchanged(flow, FieldGroup::State);
        refuseAfterFailedReplacement(change, flow, to);
        const auto answer = Transitions::move(change.facts(flow), to, change.visitor(flow));
        requireStep(answer, flow.state, to);
        if (const SessionMemory *memory = change.memory())
            refuseRestOfVerdict(memory->hasFailedFlags(flow.id) && Transitions::isReviewed(to));
        writeFlowState(change, flow, to);
    });
    rememberMove(flowGuid, isMoved);
    return isMoved;
}

bool FlowChanges::finish(const std::string &jobName, FlowState to)
{
    return Change::run(finishFlow, jobName, [&](Change &change) {
        const FlowRow flow = change.flowByJobName(jobName);
        change.needsUnchanged(flow, FieldGroup::State);
        if (!(to == Transitions::Finished))
            requireStep(Transitions::Answer::NotPossible, flow.state, to);
        requireStep(Transitions::finish(change.facts(flow), change.visitor(flow)), flow.state, to);
        writeFlowState(change, flow, to);
    });
}

bool FlowChanges::setVerdict(int userId, int preCheckFlag, int checkFlag,
                             const std::string &jobName, int flowId)
{
    const bool isSet = Change::run(updateVerdict, jobName, [&](Change &change) {
        change.actsAs(userId);
        change.needs(Right::Verdict);
        const FlowRow flow = change.flowById(flowId);
        if (flow.jobName != Change::text(jobName, LongestName))
            Change::fail(QStringLiteral("flow %1 is of another job").arg(flowId),
                         tr("流程与料号不符"));
        const bool isVerdict = checkFlag == Failed || checkFlag == Passed;
        if (!isVerdict || preCheckFlag != checkFlag)
            Change::fail(QStringLiteral("no verdict: ") + flagsText(preCheckFlag, checkFlag),
                         tr("审核结果无效"));
        change.needsUnchanged(flow, FieldGroup::State);
        const auto answer =
            Transitions::verdict(change.facts(flow), checkFlag, change.visitor(flow));
        requireStep(answer, flow.state, {flow.state.status, checkFlag});
        if (SessionMemory *memory = change.memory()) {
            memory->replacementWorked(flow.guid);
            memory->verdictBegan(flow.id, flow.guid);
        }
        writeVerdict(change, flow, preCheckFlag, checkFlag);
    });
    SessionMemory *memory = currentMemory();
    if (!isSet && memory)
        memory->flagsFailed(flowId);
    return isSet;
}

bool FlowChanges::stamp(const std::string &flowGuid, int actingUserId, const StampRequests &stamps)
{
    return Change::run(updateStamp, flowGuid, [&](Change &change) {
        change.actsAs(actingUserId);
        const bool isReview = stamps.check.userId != 0 || stamps.robotCheck.userId != 0;
        if (isReview)
            change.needs(Right::Verdict);
        const FlowRow flow = change.flowByGuid(flowGuid);
        if (stamps.import.userId != 0)
            change.needs(Right::Import, flow);
        if (isReview)
            requireReviewed(flow);
        change.needsUnchanged(flow, FieldGroup::State);
        const SessionMemory *memory = change.memory();
        if (isReview && memory)
            refuseRestOfVerdict(memory->hasFailedFlags(flow.id) ||
                                memory->hasFailedMove(flow.guid));
        writeStamp(change, "update_flow_import_stamp", flow, flow.import, stamps.import);
        writeStamp(change, "update_flow_check_stamp", flow, flow.check, stamps.check);
        writeStamp(change, "update_flow_robot_check_stamp", flow, flow.robotCheck,
                   stamps.robotCheck);
    });
}

} // namespace KODMS::Services
