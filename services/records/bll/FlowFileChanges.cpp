// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/FlowChanges.h"

#include "services/records/Database.h"
#include "services/records/RecordContext.h"
#include "services/records/TimeText.h"
#include "services/records/bll/Change.h"
#include "services/records/bll/StoredFileRecords.h"
#include "services/records/bll/TextArgument.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

constexpr Operation updateTips{"remark.UpdateTips", QT_TRANSLATE_NOOP("Change", "修改备注")};
constexpr Operation updateOrigFile{"file.UpdateOrigFileGuid",
                                   QT_TRANSLATE_NOOP("Change", "更换原始文件")};
constexpr Operation updateImport{"file.UpdateLastOdbppImportMongoFsGuid",
                                 QT_TRANSLATE_NOOP("Change", "更换导入文件")};

QString tr(const char *text)
{
    return QCoreApplication::translate("Change", text);
}

/// A stored file that the flow may take: recorded, and of the same customer.
StoredFileRow fileFor(const FlowRow &flow, const std::optional<StoredFileRow> &file)
{
    if (!file)
        Change::fail(QStringLiteral("there is no such stored file"), tr("找不到该文件的记录"));
    if (file->customerCode.compare(flow.customerCode, Qt::CaseInsensitive) != 0)
        Change::fail(QStringLiteral("the file is of customer ") + file->customerCode,
                     tr("该文件属于其他客户"));
    return *file;
}

void writeOrigFile(Change &change, const FlowRow &flow, const StoredFileRow &file)
{
    Database &database = change.database();
    database.query("update_flow_orig_file").bind(":file", file.id).bind(":flow", flow.id).exec();
    database.query("update_compress_file")
        .bind(":file", file.id)
        .bind(":time", storedNow())
        .bind(":user", change.actor().userId)
        .bind(":flow", flow.id)
        .exec();
    change.audit(flow.origStoredName, file.storedName);
    change.wrote(flow, FieldGroup::File);
}

void writeImport(Change &change, const FlowRow &flow, const StoredFileRow &file)
{
    change.database()
        .query("update_flow_import_file")
        .bind(":file", file.id)
        .bind(":flow", flow.id)
        .exec();
    change.audit(flow.importStoredName, file.storedName);
    change.wrote(flow, FieldGroup::File);
}

/// Remembers how the replacement stands; its next step asks.
void rememberReplacement(const std::string &flowGuid, bool worked)
{
    RecordContext *context = RecordContext::current();
    auto *memory = context ? dynamic_cast<SessionMemory *>(context->shownRecords()) : nullptr;
    if (!memory)
        return;
    const QString guid = QString::fromStdString(flowGuid);
    if (worked)
        memory->replacementWorked(guid);
    else
        memory->replacementFailed(guid);
}

} // namespace

bool FlowChanges::setRemark(int userId, const std::string &remark, const std::string &flowGuid)
{
    return Change::run(updateTips, flowGuid, [&](Change &change) {
        change.actsAs(userId);
        const FlowRow flow = change.flowByGuid(flowGuid);
        change.needs(Right::Remark, flow);
        change.needsUnchanged(flow, FieldGroup::Remark);
        const QString tips = Change::text(remark, LongestRemark);
        change.database()
            .query("update_flow_tips")
            .bind(":tips", tips)
            .bind(":flow", flow.id)
            .exec();
        change.audit(flow.tips, tips);
        change.wrote(flow, FieldGroup::Remark);
    });
}

bool FlowChanges::setOrigFile(const std::string &fileGuid, const std::string &flowGuid)
{
    return Change::run(updateOrigFile, flowGuid, [&](Change &change) {
        change.needs(Right::ChangeFiles);
        const FlowRow flow = change.flowByGuid(flowGuid);
        const QString guid = Change::text(fileGuid, LongestName);
        const StoredFileRow file = fileFor(flow, StoredFileRecords(change.database()).byGuid(guid));
        change.needsUnchanged(flow, FieldGroup::File);
        writeOrigFile(change, flow, file);
    });
}

bool FlowChanges::setLastImport(const std::string &fileGuidOrName, const std::string &flowGuid)
{
    const bool worked = Change::run(updateImport, flowGuid, [&](Change &change) {
        change.needs(Right::ChangeFiles);
        const FlowRow flow = change.flowByGuid(flowGuid);
        const QString name = Change::text(fileGuidOrName, LongestName);
        const StoredFileRow file =
            fileFor(flow, StoredFileRecords(change.database()).byGuidOrName(name));
        change.needsUnchanged(flow, FieldGroup::File);
        writeImport(change, flow, file);
        if (SessionMemory *memory = change.memory())
            memory->verdictBegan(flow.id, flow.guid); // what follows is none of its steps
    });
    rememberReplacement(flowGuid, worked);
    return worked;
}

} // namespace KODMS::Services
