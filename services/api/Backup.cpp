// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/Backup.h"

#include "services/api/ServiceRuntime.h"
#include "services/api/internal/BackupRestore.h"
#include "services/api/internal/BackupWriter.h"
#include "services/notices/NoticeHub.h"
#include "services/session/Runtime.h"
#include "services/tasks/TaskRunner.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace KODMS::Services {

namespace {

using Work = std::function<Result<BackupSummary>(Progress &)>;

QString tr(const char *text)
{
    return QCoreApplication::translate("Backup", text);
}

Result<BackupSummary> ran(const char *action, const QString &file, const QString &title,
                          const Work &work, Progress *progress)
{
    BackupSummary summary;
    bool isCancelled = false;
    const auto step = [&](Progress &shown) {
        auto result = work(shown);
        summary = result.value;
        isCancelled = shown.isCancelled();
        return result.outcome;
    };
    const Outcome done = progress ? step(*progress) : TaskRunner::instance().run(title, step);
    if (done)
        return summary;
    if (!isCancelled && !done.isCancelled)
        reportFailure(lcFileStore(), action, file, done.cause, done.text);
    return done;
}

Result<Configuration> emptyInstallation(const QString &iniPath)
{
    if (ServiceRuntime::instance().isRunning())
        return Outcome::failure(tr("服务正在运行，不能在此时恢复"));
    const QString path = iniPath.isEmpty() ? Configuration::defaultPath() : iniPath;
    if (QFileInfo::exists(path))
        return Configuration::load(path);
    return Configuration::defaultsFor(path);
}

} // namespace

Result<BackupSummary> Backup::backup(const QString &file, Progress *progress)
{
    Runtime *runtime = Runtime::current();
    if (!runtime)
        return Outcome::failure(tr("服务尚未启动"));
    const Actor &actor = runtime->records().actor();
    if (!actor.roles.has(Role::Admin)) {
        reportRefusal("backup", file, QStringLiteral("user %1").arg(actor.userId),
                      tr("只有管理员可以备份"));
        return Outcome::failure(tr("只有管理员可以备份"));
    }
    const QFileInfo info(file);
    if (file.isEmpty() || info.exists() || info.isSymLink())
        return Outcome::failure(tr("备份文件已存在，不会覆盖：%1").arg(file));
    const auto work = [&](Progress &shown) {
        return BackupWriter(runtime->configuration(), runtime->fileStore(), shown)
            .write(info.absoluteFilePath());
    };
    return ran("backup", file, tr("备份到 %1").arg(info.fileName()), work, progress);
}

Result<BackupSummary> Backup::restore(const QString &iniPath, const QString &file,
                                      Progress *progress)
{
    const auto configuration = emptyInstallation(iniPath);
    if (!configuration)
        return configuration.outcome;
    const auto work = [&](Progress &shown) -> Result<BackupSummary> {
        const auto manifest = BackupRestore(configuration.value).run(file, shown);
        if (!manifest)
            return manifest.outcome;
        return summaryOf(manifest.value);
    };
    return ran("restore", file, tr("恢复 %1").arg(QFileInfo(file).fileName()), work, progress);
}

Result<BackupSummary> Backup::verify(const QString &file, Progress *progress)
{
    const auto work = [&](Progress &shown) -> Result<BackupSummary> {
        shown.setTotal(QFileInfo(file).size());
        const auto manifest = BackupReader(shown).read(file, nullptr);
        if (!manifest)
            return manifest.outcome;
        return summaryOf(manifest.value);
    };
    return ran("verify", file, tr("核对 %1").arg(QFileInfo(file).fileName()), work, progress);
}

} // namespace KODMS::Services
