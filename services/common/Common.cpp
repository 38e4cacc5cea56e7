// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/common/Common.h"

#include "services/archive/FolderPacker.h"
#include "services/common/PlacedStore.h"
#include "services/common/StoreFailure.h"
#include "services/disk/StagedFile.h"
#include "services/records/Guid.h"
#include "services/records/TimeText.h"
#include "services/records/bll/Change.h"
#include "services/records/bll/StoredFileRecords.h"
#include "services/records/bll/TextArgument.h"
#include "services/session/Runtime.h"
#include "services/tasks/TaskRunner.h"

#include <QCoreApplication>
#include <QDir>

namespace KODMS {

using namespace Services;

namespace {

constexpr Operation putFile{"file.put", QT_TRANSLATE_NOOP("Change", "存入文件")};
constexpr Operation markDelete{"file.markDelete", QT_TRANSLATE_NOOP("Change", "标记删除文件")};
constexpr Operation packAndPut{"file.packAndPut", QT_TRANSLATE_NOOP("Change", "打包存入文件夹")};

constexpr int Done = 0;
constexpr int Failed = -1;

QString tr(const char *text)
{
    return QCoreApplication::translate("Common", text);
}

/// Asked before the long part, which holds no transaction.
bool mayChangeFiles(const Operation &operation, const std::string &record)
{
    return Change::look(operation, record,
                        [](Change &change) { change.needs(Right::ChangeFiles); });
}

int settled(const Operation &operation, const std::string &record, const Outcome &outcome)
{
    if (outcome)
        return Done;
    reportFileFailure(lcFileStore(), operation.action, record, outcome);
    return Failed;
}

void writeMark(Change &change, FileStore &store, const QString &name)
{
    const auto record = StoredFileRecords(change.database()).byStoredName(name);
    const auto isThere = record ? Result<bool>(true) : store.has(name);
    if (!isThere)
        Change::fail(isThere.outcome.cause, isThere.text());
    if (!isThere.value)
        Change::fail(QStringLiteral("no such file is stored or recorded"),
                     tr("文件库中没有该文件"));
    change.database()
        .query("mark_delete")
        .bind(":name", name)
        .bind(":user", change.actor().userId)
        .bind(":time", storedNow())
        .exec();
    change.isAbout(QStringLiteral("file"), record ? record->id : 0, name);
    change.audit(QString(), QStringLiteral("marked"));
}

/// The packed folder stands in the staging folder only until it is stored.
Outcome packInto(Runtime &runtime, const QString &folder, const QString &path, const QString &name,
                 Progress &progress)
{
    const StagedFile zip(path);
    const auto packed = packFolder(folder, path, runtime.configuration().limits, progress);
    if (!packed)
        return packed.outcome;
    return runtime.fileStore().put(path, name, progress);
}

} // namespace

Common *Common::commonInterface()
{
    static Common common;
    return &common;
}

KODMS_Config Common::getConfig()
{
    const Runtime *runtime = Runtime::current();
    if (!runtime) {
        reportFailure(lcConfig(), "getConfig", QString(), QStringLiteral("nothing is running"),
                      tr("服务尚未启动，没有配置"));
        return {};
    }
    const Configuration &from = runtime->configuration();
    KODMS_Config config;
    config.fileStoreDb = from.fileStore.database.toStdString();
    config.fileStoreBucket = from.fileStore.bucket.toStdString();
    config.stagingDir = from.paths.staging.toStdString();
    config.downloadDir = from.paths.download.toStdString();
    config.robotHost = from.robot.host.toStdString();
    config.robotPort = from.robot.port;
    return config;
}

std::string Common::getGUID()
{
    return newGuid().toStdString();
}

int Common::MongodbPut(const std::string &database, const std::string &bucket,
                       const std::string &localPath, const std::string &storedName)
{
    if (!mayChangeFiles(putFile, storedName))
        return Failed;
    auto place = PlacedStore::named(database, bucket);
    if (!place)
        return settled(putFile, storedName, place.outcome);
    const QString name = QString::fromStdString(storedName);
    const Outcome put =
        TaskRunner::instance().run(tr("存入 %1").arg(name), [&](Progress &progress) {
            return place.value.store().put(QString::fromStdString(localPath), name, progress);
        });
    return settled(putFile, storedName, put);
}

int Common::MongodbDel(const std::string &database, const std::string &bucket,
                       const std::string &storedName)
{
    const bool marked = Change::run(markDelete, storedName, [&](Change &change) {
        change.needs(Right::ChangeFiles);
        auto place = PlacedStore::named(database, bucket);
        if (!place)
            Change::fail(place.outcome.cause, place.text());
        if (!place.value.isRunningOne())
            Change::fail(QStringLiteral("not the place that the records name"),
                         tr("不是当前使用的文件库"));
        writeMark(change, place.value.store(), Change::text(storedName, LongestName));
    });
    return marked ? Done : Failed;
}

int Common::FoldersCompressSave2MongoDb(const std::string &folder, const std::string &stagingDir,
                                        std::string &storedName)
{
    storedName.clear();
    Runtime *runtime = Runtime::current();
    if (!mayChangeFiles(packAndPut, folder) || !runtime)
        return Failed;
    const QString guid = newGuid();
    const QString name = guid + QStringLiteral(".zip");
    const QString zip = QDir(QString::fromStdString(stagingDir)).filePath(name);
    const QString from = QString::fromStdString(folder);
    const Outcome stored =
        TaskRunner::instance().run(tr("打包存入 %1").arg(from), [&](Progress &progress) {
            return packInto(*runtime, from, zip, name, progress);
        });
    if (stored)
        storedName = guid.toStdString();
    return settled(packAndPut, folder, stored);
}

} // namespace KODMS
