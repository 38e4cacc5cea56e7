// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/BackupRestore.h"

#include "services/disk/Disk.h"
#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"
#include "services/records/DatabaseFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Backup", text);
}

void removeDatabaseFiles(const QString &path)
{
    for (const char *suffix : {"", "-wal", "-shm"})
        QFile::remove(path + QString::fromLatin1(suffix));
}

} // namespace

BackupRestore::BackupRestore(Configuration configuration)
    : m_configuration(std::move(configuration)),
      m_newDatabase(m_configuration.database.path + QStringLiteral(".restoring"))
{
}

BackupRestore::~BackupRestore()
{
    if (m_isWhole)
        return;
    if (!m_configuration.database.path.isEmpty())
        removeDatabaseFiles(m_newDatabase);
    if (m_savedConfiguration)
        QFile::remove(m_configuration.filePath);
    for (const QString &name : qAsConst(m_put)) {
        const Outcome removed = m_store->remove(name); // else the next check finds it
        Q_UNUSED(removed)
    }
}

Result<BackupManifest> BackupRestore::run(const QString &path, Progress &progress)
{
    if (Outcome free = refuseExisting(); !free)
        return free;
    if (Outcome opened = openStore(); !opened)
        return opened;
    progress.setTotal(QFileInfo(path).size());
    auto manifest = BackupReader(progress).read(path, this);
    if (!manifest)
        return manifest;
    if (Outcome good = checkRecords(manifest.value); !good)
        return good;
    if (Outcome published = publish(); !published)
        return published;
    return manifest;
}

Outcome BackupRestore::refuseExisting() const
{
    const QString database = m_configuration.database.path;
    if (database.isEmpty())
        return Outcome::failure(
            tr("此种数据库须用数据库服务器自己的工具恢复，或用 kodms-admin copy 从嵌入式安装复制"),
            QStringLiteral("not a database in a file"));
    if (QFileInfo::exists(database))
        return Outcome::failure(tr("已有数据库 %1，只能恢复到空的安装").arg(database),
                                QStringLiteral("%1 exists").arg(database));
    return makeFolder(QFileInfo(database).absolutePath());
}

Outcome BackupRestore::openStore()
{
    auto store = FileStore::create(m_configuration.fileStore);
    m_store = std::move(store.value);
    return store ? makeFolder(QDir(m_configuration.paths.staging).absolutePath()) : store.outcome;
}

Outcome BackupRestore::manifest(const BackupManifest &manifest)
{
    const QString engine = databaseEngine(m_configuration.database);
    if (manifest.engine != engine)
        return Outcome::failure(tr("备份来自另一种数据库（%1）").arg(manifest.engine),
                                QStringLiteral("engine %1, not %2").arg(manifest.engine, engine));
    return refuseForeign(manifest);
}

Outcome BackupRestore::refuseForeign(const BackupManifest &manifest)
{
    QHash<QString, QByteArray> expected;
    for (const StoredFileInfo &file : manifest.files)
        expected.insert(file.name, file.sha256);
    const auto files = m_store->list();
    if (!files)
        return files.outcome;
    for (const StoredFileInfo &file : files.value) {
        if (expected.value(file.name) != file.sha256)
            return Outcome::failure(
                tr("文件库 %1 不是空的，只能恢复到空的安装").arg(m_store->placeText()),
                QStringLiteral("%1 is in the store and not in the backup").arg(file.name));
        m_present.insert(file.name);
    }
    return Outcome::success();
}

Outcome BackupRestore::begin(const StoredFileInfo &part, bool isRecords)
{
    m_part = part;
    m_open = nullptr;
    if (isRecords) {
        removeDatabaseFiles(m_newDatabase); // of an interrupted restore
        auto records = FileHandle::createNew(m_newDatabase);
        m_records = std::move(records.value);
        m_open = &m_records;
        return records.outcome;
    }
    if (m_present.contains(part.name))
        return Outcome::success();
    const QDir staging(m_configuration.paths.staging);
    auto body = LocalTarget::create(staging.absoluteFilePath(QStringLiteral(".kodms-restore")));
    m_body = std::move(body.value);
    m_open = &m_body.file();
    return body.outcome;
}

Outcome BackupRestore::data(const char *bytes, qint64 size)
{
    return m_open ? m_open->write(bytes, size) : Outcome::success();
}

Outcome BackupRestore::end()
{
    if (!m_open)
        return Outcome::success();
    return m_open == &m_records ? endRecords() : endBody();
}

Outcome BackupRestore::endRecords()
{
    const Outcome synced = m_records.sync();
    return synced ? m_records.close() : synced;
}

Outcome BackupRestore::endBody()
{
    NoProgress silent;
    Outcome put = m_store->put(m_body.file().path(), m_part.name, silent);
    m_body = LocalTarget();
    if (put)
        m_put << m_part.name;
    return put;
}

Outcome BackupRestore::checkRecords(const BackupManifest &manifest)
{
    const auto contents = inspectDatabaseFile(m_configuration.database, m_newDatabase);
    if (!contents)
        return contents.outcome;
    for (const QString &name : contents.value.storedNames) {
        const auto isThere = m_store->has(name);
        if (!isThere)
            return isThere.outcome;
        if (!isThere.value)
            return Outcome::failure(tr("备份中缺少文件 %1").arg(name),
                                    QStringLiteral("%1 is recorded, not restored").arg(name));
    }
    if (contents.value.storedNames.size() == manifest.files.size())
        return Outcome::success();
    return Outcome::failure(tr("备份中的文件与记录不符"),
                            QStringLiteral("%1 files, %2 records")
                                .arg(manifest.files.size())
                                .arg(contents.value.storedNames.size()));
}

Outcome BackupRestore::publish()
{
    if (!QFileInfo::exists(m_configuration.filePath)) {
        if (Outcome saved = m_configuration.save(); !saved)
            return saved;
        m_savedConfiguration = true;
    }
    std::error_code error;
    const QString path = m_configuration.database.path;
    Disk::rename(fsPath(m_newDatabase), fsPath(path), error);
    if (error)
        return ioFailure("rename", path, error.value());
    m_isWhole = true;
    return syncFolder(QFileInfo(path).absolutePath());
}

} // namespace KODMS::Services
