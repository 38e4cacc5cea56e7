// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/RobotChanges.h"

#include "services/records/Database.h"
#include "services/records/StoredFiles.h"
#include "services/records/TimeText.h"
#include "services/records/bll/Change.h"
#include "services/records/bll/FlowStep.h"
#include "services/records/bll/StoredFileRecords.h"
#include "services/records/bll/TextArgument.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

constexpr Operation takeJob{"state.robotTake", QT_TRANSLATE_NOOP("Change", "机器人接收料号")};
constexpr Operation listJobs{"state.robotJobs", QT_TRANSLATE_NOOP("Change", "查询机器人料号")};
constexpr Operation deliverJob{"state.robotResult", QT_TRANSLATE_NOOP("Change", "交付机器人结果")};

constexpr FlowState AtRobot{2, 0};

QString tr(const char *text)
{
    return QCoreApplication::translate("Change", text);
}

/// The one flow whose job name is this but for upper and lower case.
FlowRow flowByAnyCase(Change &change, const QString &jobName)
{
    const QString wanted = Change::text(jobName.toStdString(), LongestName).toLower();
    std::vector<int> found;
    SqlQuery query = change.database().query("select_flows_by_any_case");
    query.bind(":name", jobName).exec();
    while (query.next()) {
        if (query.text("job_name").toLower() == wanted)
            found.push_back(query.number("id"));
    }
    if (found.empty())
        Change::fail(QStringLiteral("there is no such job"), tr("没有该料号"));
    if (found.size() > 1)
        Change::fail(QStringLiteral("%1 jobs have this name").arg(found.size()),
                     tr("有多个料号只有大小写不同，无法确定是哪一个"));
    return change.flowById(found.front());
}

/// The desk asks too; but a replaced file is sent on without a look at its order.
void requirePaid(Change &change, const FlowRow &flow)
{
    if (!flow.jobName.startsWith(QLatin1String("web"), Qt::CaseInsensitive))
        return;
    SqlQuery order = change.database().query("select_order_by_flow");
    order.bind(":flow", flow.id).exec();
    if (!order.next() || order.number("payment") == 0)
        Change::refuse(QStringLiteral("a web job whose order is unpaid"), tr("订单未付款"));
}

FlowRow flowOf(Change &change, const RobotRun &run)
{
    change.needs(Right::RobotState);
    const FlowRow flow = change.flowById(run.flowId);
    if (!(flow.state == AtRobot) || flow.resultFileId != 0 ||
        flow.versions.state != run.stateVersion)
        Change::refuse(QStringLiteral("the flow has moved on: ") + stateText(flow.state),
                       tr("料号已有变动，机器人的结果不再有效"));
    return flow;
}

void requireStored(Change &change, const StoredFileRow &file)
{
    if (!change.isStored(file.storedName))
        Change::fail(QStringLiteral("no file is stored as ") + file.storedName,
                     tr("文件库中没有该文件，未登记"));
}

int insertResult(Change &change, const FlowRow &flow, const StoredFileRow &file)
{
    StoredFileRow row = file;
    row.customerCode = flow.customerCode;
    row.kind = StoredFileKind::RobotResult;
    return StoredFileRecords(change.database()).insert(row, 0, change.actor().userId);
}

} // namespace

Result<RobotRun> RobotChanges::take(const QString &jobName)
{
    RobotRun run;
    const Outcome taken = Change::outcomeOf(takeJob, jobName.toStdString(), [&](Change &change) {
        change.needs(Right::RobotState);
        const FlowRow flow = flowByAnyCase(change, jobName);
        requirePaid(change, flow);
        requireStep(Transitions::move(change.facts(flow), AtRobot, change.visitor(flow)),
                    flow.state, AtRobot);
        writeFlowState(change, flow, AtRobot);
        run = {flow.id, flow.versions.state + 1, flow.guid, flow.jobName};
    });
    if (!taken)
        return taken;
    return run;
}

Result<std::vector<RobotRun>> RobotChanges::unfinished()
{
    std::vector<RobotRun> runs;
    const Outcome read = Change::outcomeOf(listJobs, std::string(), [&](Change &change) {
        change.needs(Right::RobotState);
        SqlQuery query = change.database().query("select_flows_at_robot");
        query.bind(":user", change.actor().userId).exec();
        while (query.next())
            runs.push_back({query.number("id"), query.number("state_version"), query.text("guid"),
                            query.text("job_name")});
    });
    if (!read)
        return read;
    return runs;
}

Outcome RobotChanges::mayDeliver(const RobotRun &run)
{
    return Change::outcomeOf(deliverJob, run.jobName.toStdString(),
                             [&](Change &change) { flowOf(change, run); });
}

Outcome RobotChanges::deliver(const RobotRun &run, const StoredFileRow &file,
                              const QString &preparedName)
{
    return Change::outcomeOf(deliverJob, run.jobName.toStdString(), [&](Change &change) {
        const FlowRow flow = flowOf(change, run);
        requireStored(change, file);
        change.database()
            .query("update_flow_result")
            .bind(":file", insertResult(change, flow, file))
            .bind(":time", storedNow())
            .bind(":name", Change::text(preparedName.toStdString(), LongestName))
            .bind(":flow", flow.id)
            .exec();
        change.audit(QString(), file.storedName);
        change.wrote(flow, FieldGroup::State);
    });
}

} // namespace KODMS::Services
