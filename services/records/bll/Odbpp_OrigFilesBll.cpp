// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_OrigFilesBll.h"

#include "services/records/Database.h"
#include "services/records/Guid.h"
#include "services/records/StoredFiles.h"
#include "services/records/bll/Change.h"
#include "services/records/bll/StoredFileRecords.h"
#include "services/records/bll/TextArgument.h"

#include <QCoreApplication>

namespace KODMS::DataLib::BLL {

using namespace Services;

namespace {

constexpr Operation inputFile{"file.inputOrigFile", QT_TRANSLATE_NOOP("Change", "登记文件")};

constexpr int LongestType = 20;

QString tr(const char *text)
{
    return QCoreApplication::translate("Change", text);
}

QString customerCode(Change &change, const std::string &given)
{
    SqlQuery query = change.database().query("select_customer_by_code");
    query.bind(":code", Change::text(given, LongestName)).exec();
    if (!query.next())
        Change::fail(QStringLiteral("there is no such customer"), tr("没有该客户代码"));
    return query.text("code");
}

/// A marked file is on its way out, perhaps at this moment: the record would outlive it.
void requireNotLeaving(Change &change, const QString &storedName)
{
    SqlQuery mark = change.database().query("select_delete_mark");
    if (mark.bind(":name", storedName).exec().next())
        Change::refuse(QStringLiteral("the stored file is being removed"),
                       tr("该文件正在被删除，未登记"));
}

void requireNew(Change &change, const StoredFileRow &file)
{
    StoredFileRecords files(change.database());
    if (!isGuid(file.guid))
        Change::fail(QStringLiteral("not a GUID: ") + file.guid, tr("文件 GUID 无效"));
    if (files.byGuid(file.guid))
        Change::fail(QStringLiteral("the GUID is taken"), tr("文件 GUID 已被使用"));
    if (files.isRecorded(file.storedName))
        Change::fail(QStringLiteral("the stored file is recorded already"), tr("该文件已登记"));
    requireNotLeaving(change, file.storedName);
    if (!change.isStored(file.storedName))
        Change::fail(QStringLiteral("no file is stored under this name"),
                     tr("文件库中没有该文件，未登记"));
}

} // namespace

bool Odbpp_OrigFilesBll::inputOrigFile(std::string guid, std::string baseName,
                                       std::string storedName, std::string fileType,
                                       std::string customerCode, int state, int userId)
{
    return Change::run(inputFile, storedName, [&](Change &change) {
        change.actsAs(userId);
        change.needs(Right::ChangeFiles);
        StoredFileRow file;
        file.guid = Change::text(guid, LongestName);
        file.baseName = Change::text(baseName, LongestName);
        file.storedName = Change::text(storedName, LongestName);
        file.fileType = Change::text(fileType, LongestType);
        file.customerCode = BLL::customerCode(change, customerCode);
        requireNew(change, file);
        const int id = StoredFileRecords(change.database()).insert(file, state, userId);
        change.isAbout(QStringLiteral("file"), id, file.storedName);
        change.audit(QString(), file.guid);
    });
}

} // namespace KODMS::DataLib::BLL
