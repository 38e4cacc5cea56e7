// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/NewInstallation.h"

#include "services/disk/FileHandle.h"
#include "services/filestore/FileStore.h"
#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/records/DatabaseFile.h"
#include "services/records/SchemaMigrator.h"
#include "services/records/Transaction.h"
#include "services/records/bll/Audit.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("InstallationSetup", text);
}

void insertUsers(Database &database, const std::vector<UserRow> &users)
{
    UserRecords records(database);
    for (const UserRow &user : users) {
        const int id = records.insert(user);
        writeAudit(database,
                   {0, QStringLiteral("user.add"), QStringLiteral("user"), id, user.loginName,
                    QString(), user.roles.names().join(QLatin1Char(' ')), false});
    }
}

} // namespace

NewInstallation::NewInstallation(Configuration configuration)
    : m_configuration(std::move(configuration))
{
}

NewInstallation::~NewInstallation()
{
    if (m_madeDatabase && !m_isWhole)
        removeDatabase();
}

Outcome NewInstallation::make(const std::vector<UserRow> &users)
{
    Outcome outcome = refuseExisting();
    if (outcome)
        outcome = makeFolders();
    if (outcome)
        outcome = makeStore();
    if (outcome)
        outcome = claimDatabase();
    if (outcome)
        outcome = makeRecords(users);
    if (outcome && !QFileInfo::exists(m_configuration.filePath))
        outcome = m_configuration.save();
    m_isWhole = outcome.ok;
    return outcome;
}

Outcome NewInstallation::refuseExisting() const
{
    const QString path = m_configuration.database.path;
    const bool isThere = path.isEmpty() ? isInstalledOnServer() : QFileInfo::exists(path);
    return isThere ? existing() : Outcome::success();
}

/// A server that cannot be reached, or knows no such database, is told of by the making.
bool NewInstallation::isInstalledOnServer() const
{
    try {
        Database database(m_configuration.database);
        return SchemaMigrator(database).installedVersion() > 0;
    } catch (const SqlError &) {
        return false;
    }
}

Outcome NewInstallation::existing() const
{
    return Outcome::failure(
        tr("已有数据库 %1，不会覆盖").arg(databasePlace(m_configuration.database)));
}

Outcome NewInstallation::makeFolders() const
{
    const QString path = m_configuration.database.path;
    QStringList folders{m_configuration.paths.staging, m_configuration.paths.download};
    if (!path.isEmpty())
        folders << QFileInfo(path).absolutePath();
    if (!m_configuration.fileStore.root.isEmpty())
        folders << m_configuration.fileStore.root;
    for (const QString &folder : qAsConst(folders)) {
        if (!QDir().mkpath(folder))
            return Outcome::failure(tr("无法创建文件夹 %1").arg(folder));
    }
    return Outcome::success();
}

/// Files without records are what a lost database leaves: a restore is due then,
/// not a new beginning.
Outcome NewInstallation::makeStore() const
{
    const auto store = FileStore::create(m_configuration.fileStore);
    if (!store)
        return store.outcome;
    const auto files = store.value->list();
    if (!files)
        return files.outcome;
    if (!files.value.isEmpty())
        return Outcome::failure(
            tr("文件库 %1 不是空的，请先恢复数据库备份或换一个位置").arg(store.value->placeText()));
    return Outcome::success();
}

/// Makes the empty file of the database, which only one run can. A place where nobody can
/// is left to the opening of the database, which knows the reason.
Outcome NewInstallation::claimDatabase()
{
    const QString path = m_configuration.database.path;
    if (path.isEmpty())
        return Outcome::success();
    m_madeDatabase = FileHandle::createNew(path).outcome.ok;
    return m_madeDatabase || !QFileInfo::exists(path) ? Outcome::success() : existing();
}

Outcome NewInstallation::makeRecords(const std::vector<UserRow> &users)
{
    try {
        Database database(m_configuration.database, Database::Open::Create);
        Transaction transaction(database); // tables and people at once, or neither
        const Outcome installed = SchemaMigrator(database).install();
        if (!installed)
            return installed;
        insertUsers(database, users);
        transaction.commit();
    } catch (const SqlError &error) {
        qCWarning(lcRecords).noquote() << "make database" << error.logText();
        return notMade(error);
    }
    return Outcome::success();
}

/// That it is missing even now means that the server lets nobody in where it could be made.
Outcome NewInstallation::notMade(const SqlError &error) const
{
    const DatabaseSettings &settings = m_configuration.database;
    if (error.kind() == SqlError::Kind::Missing)
        return Outcome::failure(
            tr("没有数据库 %1，账户 %2 也不能在服务器上新建它（%3）："
               "请先由服务器的管理员新建")
                .arg(databasePlace(settings), settings.user, error.driverText()));
    return Outcome::failure(tr("无法创建数据库：%1").arg(error.detailedText()));
}

void NewInstallation::removeDatabase() const
{
    for (const char *suffix : {"", "-wal", "-shm"})
        QFile::remove(m_configuration.database.path + QString::fromLatin1(suffix));
}

} // namespace KODMS::Services
