// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/LocalTarget.h"

#include "services/disk/Disk.h"
#include "services/disk/FileLock.h"
#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"
#include "services/disk/RunAside.h"
#include "services/filestore/FolderLayout.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <memory>

namespace KODMS::Services {

namespace {

const QString Prefix = QStringLiteral(".kodms-");
const QString Suffix = QStringLiteral(".part");

Outcome removeStanding(const QString &path)
{
    const std::filesystem::path target = fsPath(path);
    std::error_code error;
    if (Disk::typeOf(target, error) == Disk::FileType::directory)
        return ioFailure("replace", path, EISDIR);
    error.clear();
    Disk::remove(target, error);
    return error ? ioFailure("remove", path, error.value()) : Outcome::success();
}

void sweepRemains(const QDir &folder)
{
    const QStringList parts = folder.entryList({Prefix + QLatin1Char('*') + Suffix},
                                               QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QString &part : parts)
        FileLock::isAlive(folder.filePath(part));
}

} // namespace

Result<LocalTarget> LocalTarget::create(const QString &path)
{
    if (Outcome removed = removeStanding(path); !removed)
        return removed;
    const QDir folder = QFileInfo(path).dir();
    if (!folder.exists())
        return ioFailure("create in", folder.path(), ENOENT);
    sweepRemains(folder);
    for (;;) {
        Result<FileHandle> file =
            FileHandle::createNew(folder.filePath(Prefix + FolderLayout::newId() + Suffix));
        if (!file)
            return file.outcome;
        file.value.lock(true);
        const auto stamp = file.value.stamp();
        if (!stamp)
            return stamp.outcome;
        if (stamp.value.linked)
            return LocalTarget(path, std::move(file.value));
    }
}

Outcome LocalTarget::publish()
{
    std::error_code error;
    Disk::rename(fsPath(m_file.path()), fsPath(m_path), error);
    if (error)
        return ioFailure("rename", m_path, error.value());
    return m_file.close();
}

LocalTarget::~LocalTarget()
{
    if (!m_file.isOpen())
        return;
    std::error_code ignored;
    Disk::remove(fsPath(m_file.path()), ignored);
    // The name is gone at once; giving up a large content is what takes time.
    runAside([file = std::make_shared<FileHandle>(std::move(m_file))] {});
}

} // namespace KODMS::Services
