// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/DatabaseSnapshot.h"

#include "services/records/Database.h"
#include "services/records/Dialect.h"
#include "services/records/Guid.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace KODMS::Services {

namespace {

const QString LockSuffix = QStringLiteral(".lock");

QString prefixOf(const DatabaseSettings &settings)
{
    return QFileInfo(settings.path).fileName() + QStringLiteral(".snapshot-");
}

void removeFiles(const QString &path)
{
    for (const char *suffix : {"", "-wal", "-shm", "-journal"})
        QFile::remove(path + QString::fromLatin1(suffix));
}

void sweepRemains(const DatabaseSettings &settings)
{
    const QDir folder = QFileInfo(settings.path).absoluteDir();
    const QString prefix = prefixOf(settings);
    for (const QString &name : folder.entryList({prefix + QLatin1Char('*')}, QDir::Files)) {
        const QString path = folder.filePath(name.left(prefix.size() + newGuid().size()));
        if (!FileLock::isAlive(path + LockSuffix))
            removeFiles(path);
    }
}

} // namespace

DatabaseSnapshot::DatabaseSnapshot(QString path, FileLock lock)
    : m_path(std::move(path)), m_lock(std::move(lock))
{
}

Result<std::unique_ptr<DatabaseSnapshot>> DatabaseSnapshot::take(const DatabaseSettings &settings)
{
    if (Dialect::create(settings)->isServer())
        return Outcome::failure(QCoreApplication::translate(
            "DatabaseSnapshot",
            "此种数据库须用数据库服务器自己的工具备份，或用 kodms-admin copy 复制到嵌入式安装"));
    sweepRemains(settings);
    const QDir folder = QFileInfo(settings.path).absoluteDir();
    const QString path = folder.filePath(prefixOf(settings) + newGuid());
    Result<FileLock> lock = FileLock::create(path + LockSuffix);
    if (!lock)
        return lock.outcome;
    std::unique_ptr<DatabaseSnapshot> snapshot(new DatabaseSnapshot(path, std::move(lock.value)));
    if (Outcome filled = snapshot->fill(settings); !filled)
        return filled;
    return snapshot;
}

Outcome DatabaseSnapshot::fill(const DatabaseSettings &settings)
{
    try {
        Database database(settings.patient());
        database.run(database.dialect().snapshotInto(m_path));
    } catch (const SqlError &error) {
        return Outcome::failure(error.userText(), error.logText());
    }
    auto contents = inspectDatabaseFile(settings, m_path);
    m_contents = std::move(contents.value);
    return contents.outcome;
}

DatabaseSnapshot::~DatabaseSnapshot()
{
    removeFiles(m_path);
}

} // namespace KODMS::Services
