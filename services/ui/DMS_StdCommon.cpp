// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_StdCommon.h"

#include "services/notices/NoticeHub.h"
#include "services/records/RecordContext.h"
#include "services/records/bll/Change.h"
#include "services/records/bll/StoredFileRecords.h"
#include "services/records/bll/TextArgument.h"
#include "services/session/Runtime.h"
#include "services/tasks/TaskRunner.h"
#include "services/ui/FetchTarget.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace KODMS::Services;

namespace KODMS::UI {

namespace {

constexpr Operation fetchFile{"file.fetch", QT_TRANSLATE_NOOP("Change", "取文件")};

void report(const std::string &jobName, const Outcome &failed)
{
    if (failed.isCancelled)
        return;
    const QString name = shortText(jobName);
    reportFailure(lcFileStore(), fetchFile.action, name,
                  failed.cause.isEmpty() ? failed.text : failed.cause,
                  QCoreApplication::translate("Fetch", "取文件（%1）：%2").arg(name, failed.text));
}

/// Whoever has one of the flows in scope may have the file that they share; one that no
/// flow uses any more is for the roles alone.
void needOneInScope(Change &change, const QVector<int> &flowIds)
{
    if (flowIds.isEmpty())
        change.needs(Right::Fetch);
    for (const int id : flowIds) {
        const FlowRow flow = change.flowById(id);
        if (id == flowIds.last() || change.isInScope(flow))
            return change.needs(Right::Fetch, flow);
    }
}

/// The stored name that `uuid` means, when the signed-in user may have the file;
/// empty when not, and everything is said.
QString allowedStoredName(const std::string &uuid)
{
    QString storedName;
    const bool allowed = Change::look(fetchFile, uuid, [&](Change &change) {
        StoredFileRecords files(change.database());
        const auto file = files.byGuidOrName(Change::text(uuid, LongestName));
        if (!file)
            Change::fail(QStringLiteral("no record names this file"),
                         QCoreApplication::translate("Fetch", "没有记录指向该文件"));
        storedName = file->storedName;
        needOneInScope(change, files.flowsOf(file->id));
    });
    return allowed ? storedName : QString();
}

/// It was made when the services started; somebody who tidied up may have removed it.
bool makeDownloadFolder(const QString &target)
{
    return QDir().mkpath(QFileInfo(target).absolutePath());
}

/// What was fetched before must not pass for what this fetch should have brought.
bool clearTarget(const QString &path)
{
    const QFileInfo info(path);
    return (!info.exists() && !info.isSymLink()) || QFile::remove(path);
}

} // namespace

DMS_StdCommon *DMS_StdCommon::interface()
{
    static DMS_StdCommon common;
    return &common;
}

DataLib::Model::Kodms_User DMS_StdCommon::getCurrentUser()
{
    DataLib::Model::Kodms_User user;
    const RecordContext *context = RecordContext::current();
    if (!context)
        return user;
    const Actor &actor = context->actor();
    user.id = actor.userId;
    user.loginName = actor.loginName.toStdString();
    user.realName = actor.realName.toStdString();
    user.department = actor.department;
    user.post = actor.post;
    return user;
}

void DMS_StdCommon::getFilesFrommogodbUuidTypeOriginName(std::string jobName, std::string uuid,
                                                         std::string type)
{
    Runtime *runtime = Runtime::current();
    if (!runtime) {
        report(jobName, Outcome::failure(QCoreApplication::translate("Fetch", "服务尚未启动"),
                                         QStringLiteral("the services are not running")));
        return;
    }
    const auto target = fetchTarget(runtime->configuration().paths.download,
                                    QString::fromStdString(jobName), QString::fromStdString(type));
    if (!target) {
        report(jobName, target.outcome);
        return;
    }
    if (!clearTarget(target.value)) {
        report(jobName, Outcome::failure(
                            QCoreApplication::translate("Fetch", "无法替换 %1").arg(target.value),
                            QStringLiteral("cannot replace ") + target.value));
        return;
    }
    const QString storedName = allowedStoredName(uuid);
    if (storedName.isEmpty())
        return;
    if (!makeDownloadFolder(target.value)) {
        const QString folder = QFileInfo(target.value).absolutePath();
        report(jobName, Outcome::failure(
                            QCoreApplication::translate("Fetch", "无法创建文件夹 %1").arg(folder),
                            QStringLiteral("cannot make ") + folder));
        return;
    }
    const FileStore &store = runtime->fileStore();
    const Outcome fetched = TaskRunner::instance().run(
        QCoreApplication::translate("Fetch", "取文件 %1").arg(QFileInfo(target.value).fileName()),
        [&](Progress &progress) { return store.get(storedName, target.value, progress); });
    if (!fetched)
        report(jobName, fetched);
}

} // namespace KODMS::UI
