// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/ImportChanges.h"

#include "services/records/Database.h"
#include "services/records/StoredFiles.h"
#include "services/records/TimeText.h"
#include "services/records/bll/Audit.h"
#include "services/records/bll/Change.h"
#include "services/records/bll/FlowStep.h"
#include "services/records/bll/TextArgument.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

constexpr Operation importJob{"state.importJob", QT_TRANSLATE_NOOP("Change", "导入料号")};
constexpr Operation importResult{"file.importResult",
                                 QT_TRANSLATE_NOOP("Change", "导入机器人结果")};

constexpr FlowState Imported{1, 0};
constexpr FlowState RobotPassed{2, 2};

QString tr(const char *text)
{
    return QCoreApplication::translate("Change", text);
}

const Operation &operationOf(ImportKind kind)
{
    return kind == ImportKind::PreparedJob ? importJob : importResult;
}

/// The flow, when this user may import for it as it stands now.
FlowRow allowedFlow(Change &change, const QString &flowGuid, ImportKind kind, int userId)
{
    change.actsAs(userId);
    const FlowRow flow = change.flowByGuid(flowGuid.toStdString());
    change.needsUnchanged(flow, FieldGroup::State);
    change.needsUnchanged(flow, FieldGroup::File);
    if (kind == ImportKind::RobotResult && !(flow.state == RobotPassed))
        requireStep(Transitions::Answer::NotPossible, flow.state, RobotPassed);
    // Whoever may import a job may also import what the robot made of it.
    requireStep(Transitions::move(change.facts(flow), Imported, change.visitor(flow)), flow.state,
                Imported);
    return flow;
}

int insertFile(Change &change, const FlowRow &flow, const ImportedJob &job)
{
    if (!change.isStored(job.file.storedName))
        Change::fail(QStringLiteral("no file is stored as ") + job.file.storedName,
                     tr("文件库中没有该文件，未登记"));
    StoredFileRow row = job.file;
    row.baseName = Change::text(row.baseName.toStdString(), LongestName);
    row.customerCode = flow.customerCode;
    row.kind = job.kind == ImportKind::PreparedJob ? StoredFileKind::ImportedJob
                                                   : StoredFileKind::RobotResult;
    return StoredFileRecords(change.database()).insert(row, 0, change.actor().userId);
}

void writeImport(Change &change, const FlowRow &flow, const ImportedJob &job)
{
    change.database()
        .query("update_flow_import")
        .bind(":name", Change::text(job.origJobName.toStdString(), LongestName))
        .bind(":file", insertFile(change, flow, job))
        .bind(":user", change.actor().userId)
        .bind(":time", storedNow())
        .bind(":flow", flow.id)
        .exec();
    change.database()
        .query("update_job_counts")
        .bind(":layers", job.layerCount)
        .bind(":features", job.featureCount)
        .bind(":job", flow.jobName)
        .exec();
    change.wrote(flow, FieldGroup::File);
}

void writeContent(Change &change, const FlowRow &flow, const ImportedJob &job)
{
    change.database()
        .query("insert_import_content")
        .bind(":sha256", QString::fromLatin1(job.sha256))
        .bind(":flow", flow.id)
        .bind(":user", change.actor().userId)
        .bind(":time", storedNow())
        .exec();
}

/// Two groups are written, and each is told under its own name.
void auditFile(Change &change, const FlowRow &flow, const ImportedJob &job)
{
    if (job.kind == ImportKind::RobotResult) {
        change.audit(flow.importStoredName, job.file.storedName);
        return;
    }
    writeAudit(change.database(),
               {change.actor().userId, QStringLiteral("file.importJob"), QStringLiteral("flow"),
                flow.id, flow.jobName, flow.importStoredName, job.file.storedName, false});
}

} // namespace

Outcome ImportChanges::mayImport(const QString &flowGuid, ImportKind kind, int userId)
{
    return Change::outcomeOf(operationOf(kind), flowGuid.toStdString(),
                             [&](Change &change) { allowedFlow(change, flowGuid, kind, userId); });
}

Result<std::optional<EarlierImport>> ImportChanges::earlier(const QString &flowGuid,
                                                            const QByteArray &sha256)
{
    std::optional<EarlierImport> earlier;
    const Outcome read = Change::outcomeOf(importJob, flowGuid.toStdString(), [&](Change &change) {
        const FlowRow flow = change.flowByGuid(flowGuid.toStdString());
        change.needs(Right::Import, flow);
        SqlQuery query = change.database().query("select_import_of_content");
        query.bind(":sha256", QString::fromLatin1(sha256)).bind(":flow", flow.id).exec();
        if (query.next())
            earlier = EarlierImport{query.number("flow_id") != flow.id, query.text("job_name"),
                                    query.text("import_time"), query.text("real_name")};
    });
    if (!read)
        return read;
    return earlier;
}

Outcome ImportChanges::record(const ImportedJob &job)
{
    return Change::outcomeOf(
        operationOf(job.kind), job.flowGuid.toStdString(), [&](Change &change) {
            const FlowRow flow = allowedFlow(change, job.flowGuid, job.kind, job.userId);
            writeImport(change, flow, job);
            writeContent(change, flow, job);
            auditFile(change, flow, job);
            if (job.kind == ImportKind::PreparedJob)
                writeFlowState(change, flow, Imported);
        });
}

} // namespace KODMS::Services
