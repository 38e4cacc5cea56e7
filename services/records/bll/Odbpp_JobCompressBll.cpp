// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_JobCompressBll.h"

#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/records/StoredFiles.h"
#include "services/records/TimeText.h"
#include "services/records/bll/Change.h"
#include "services/records/bll/StoredFileRecords.h"
#include "services/records/bll/TextArgument.h"

#include <QCoreApplication>

namespace KODMS::DataLib::BLL {

using namespace Services;

namespace {

constexpr Operation deleteFile{"file.DelOrigFile", QT_TRANSLATE_NOOP("Change", "删除文件")};
constexpr Operation updateZip{"file.UpdateZipUUID_OrigName",
                              QT_TRANSLATE_NOOP("Change", "更换原始文件")};

QString tr(const char *text)
{
    return QCoreApplication::translate("Change", text);
}

/// A row of the original-file desk.
struct CompressRow {
    int id = 0;
    int flowId = 0;
    int fileId = 0; ///< 0: it has lost its file
    QString origName;
    QString storedName;
    bool hasBody = false; ///< records of a sample have none
};

CompressRow rowById(Change &change, int id)
{
    SqlQuery query = change.database().query("select_compress_by_id");
    query.bind(":id", id).exec();
    if (!query.next())
        Change::fail(QStringLiteral("there is no row %1").arg(id), tr("该记录已不存在"));
    return {id,
            query.number("flow_id"),
            query.number("orig_file_id"),
            query.text("orig_name"),
            query.text("stored_name"),
            query.number("has_body") != 0};
}

void forgetFile(Change &change, const FlowRow &flow, int fileId)
{
    SqlQuery query = change.database().query("forget_flow_files");
    for (const char *place : {":orig_file", ":import_file", ":result_file"})
        query.bind(place, fileId);
    query.bind(":flow", flow.id).exec();
}

/// The stored file follows its record once the deletion is on the disk. What stays
/// behind then is marked, and goes with the next start.
void removeBody(Change &change, const QString &storedName, bool hasBody)
{
    Database &database = change.database();
    database.query("mark_final_delete")
        .bind(":name", storedName)
        .bind(":user", change.actor().userId)
        .bind(":time", storedNow())
        .exec();
    StoredFiles &files = change.storedFiles();
    change.afterwards([&database, &files, storedName, hasBody] {
        Outcome outcome = hasBody ? files.removeBody(storedName) : Outcome::success();
        try {
            if (outcome)
                database.query("delete_delete_mark").bind(":name", storedName).exec();
        } catch (const SqlError &error) {
            outcome = Outcome::failure(error.userText());
        }
        if (!outcome)
            reportFailure(lcRecords(), deleteFile.action, storedName,
                          QStringLiteral("the record is gone, the stored file stayed behind: ") +
                              outcome.text,
                          tr("记录已删除，但存储的文件暂时保留：%1").arg(outcome.text));
    });
}

void deleteRow(Change &change, const FlowRow &flow, const CompressRow &row)
{
    StoredFileRecords files(change.database());
    change.database().query("delete_compress").bind(":id", row.id).exec();
    forgetFile(change, flow, row.fileId);
    if (row.fileId != 0 && files.users(row.fileId) == 0) {
        files.remove(row.fileId);
        removeBody(change, row.storedName, row.hasBody);
    }
    change.audit(row.origName + QLatin1Char(' ') + row.storedName, QString());
    change.wrote(flow, FieldGroup::File);
}

/// A file that may stand in the row: recorded, and really in the store.
StoredFileRow storedFile(Change &change, const FlowRow &flow, const std::string &storedName)
{
    const QString name = Change::text(storedName, LongestName);
    const auto file = StoredFileRecords(change.database()).byStoredName(name);
    if (!file || !change.isStored(name))
        Change::fail(QStringLiteral("no such file is stored and recorded"),
                     tr("文件库中没有该文件"));
    if (file->customerCode.compare(flow.customerCode, Qt::CaseInsensitive) != 0)
        Change::fail(QStringLiteral("the file is of customer ") + file->customerCode,
                     tr("该文件属于其他客户"));
    return *file;
}

void writeRow(Change &change, const FlowRow &flow, const CompressRow &row,
              const StoredFileRow &file, const QString &origName)
{
    Database &database = change.database();
    database.query("update_flow_orig_file").bind(":file", file.id).bind(":flow", flow.id).exec();
    database.query("update_compress_file")
        .bind(":file", file.id)
        .bind(":time", storedNow())
        .bind(":user", change.actor().userId)
        .bind(":flow", flow.id)
        .exec();
    database.query("update_compress_name").bind(":name", origName).bind(":id", row.id).exec();
    change.audit(row.origName + QLatin1Char(' ') + row.storedName,
                 origName + QLatin1Char(' ') + file.storedName);
    change.wrote(flow, FieldGroup::File);
}

} // namespace

bool Odbpp_JobCompressBll::DelOrigFile(int id, std::string uuid, std::string flowGuid)
{
    return Change::run(deleteFile, uuid, [&](Change &change) {
        change.needs(Right::ChangeFiles);
        const FlowRow flow = change.flowByGuid(flowGuid);
        change.needsUnchanged(flow, FieldGroup::File);
        const CompressRow row = rowById(change, id);
        if (row.flowId != flow.id)
            Change::fail(QStringLiteral("row %1 is of another flow").arg(id),
                         tr("该记录与流程不符"));
        if (row.storedName != Change::text(uuid, LongestName))
            Change::refuse(QStringLiteral("the row holds another file now"),
                           tr("该文件已被更换，请刷新后再试"));
        deleteRow(change, flow, row);
    });
}

bool Odbpp_JobCompressBll::UpdateZipUUID_OrigName(int id, std::string storedName, int userId,
                                                  std::string origName)
{
    return Change::run(updateZip, storedName, [&](Change &change) {
        change.actsAs(userId);
        change.needs(Right::ChangeFiles);
        const CompressRow row = rowById(change, id);
        const FlowRow flow = change.flowById(row.flowId);
        change.needsUnchanged(flow, FieldGroup::File);
        const QString name = Change::text(origName, LongestName);
        writeRow(change, flow, row, storedFile(change, flow, storedName), name);
    });
}

} // namespace KODMS::DataLib::BLL
