// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/UnpackFolder.h"

#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"

#include <QDir>
#include <QUuid>

namespace KODMS::Services {

namespace {

const QString Prefix = QStringLiteral(".kodms-unpack-");
const QString LockSuffix = QStringLiteral(".lock");

void removeAll(const QString &path)
{
    std::error_code ignored;
    std::filesystem::remove_all(fsPath(path), ignored);
}

void sweepRemains(const QDir &parent)
{
    const auto filter = QDir::Dirs | QDir::Files | QDir::Hidden;
    for (QString name : parent.entryList({Prefix + QLatin1Char('*')}, filter)) {
        if (name.endsWith(LockSuffix))
            name.chop(LockSuffix.size());
        const QString path = parent.filePath(name);
        if (!FileLock::isAlive(path + LockSuffix))
            removeAll(path);
    }
}

Outcome makeFolders(const QString &path)
{
    std::error_code error;
    std::filesystem::create_directories(fsPath(path), error);
    return error ? ioFailure("create folder", path, error.value()) : Outcome::success();
}

QString folderOf(const QString &path)
{
    return path.left(path.lastIndexOf(QLatin1Char('/')));
}

} // namespace

UnpackFolder::UnpackFolder(QString path, FileLock lock)
    : m_path(std::move(path)), m_lock(std::move(lock))
{
}

Result<std::unique_ptr<UnpackFolder>> UnpackFolder::create(const QString &parentFolder)
{
    if (Outcome made = makeFolders(parentFolder); !made)
        return made;
    const QDir parent(parentFolder);
    sweepRemains(parent);
    const QString path = parent.filePath(Prefix + QUuid::createUuid().toString(QUuid::Id128));
    Result<FileLock> lock = FileLock::create(path + LockSuffix);
    if (!lock)
        return lock.outcome;
    std::unique_ptr<UnpackFolder> folder(new UnpackFolder(path, std::move(lock.value)));
    if (Outcome made = makeFolders(path); !made)
        return made;
    return folder;
}

UnpackFolder::~UnpackFolder()
{
    removeAll(m_path);
}

Outcome UnpackFolder::folder(const QString &path)
{
    return makeFolders(below(path));
}

Outcome UnpackFolder::beginFile(const QString &path)
{
    const QString file = below(path);
    if (Outcome made = makeFolders(folderOf(file)); !made)
        return made;
    // A later version of a file in the same archive replaces the earlier one.
    std::error_code ignored;
    std::filesystem::remove(fsPath(file), ignored);
    Result<FileHandle> created = FileHandle::createNew(file);
    if (!created)
        return created.outcome;
    m_file = std::move(created.value);
    return Outcome::success();
}

Outcome UnpackFolder::data(const char *bytes, qint64 size)
{
    return m_file.write(bytes, size);
}

Outcome UnpackFolder::endFile()
{
    return m_file.close();
}

Outcome UnpackFolder::copy(const QString &from, const QString &to)
{
    if (Outcome made = makeFolders(folderOf(below(to))); !made)
        return made;
    std::error_code error;
    std::filesystem::copy_file(fsPath(below(from)), fsPath(below(to)),
                               std::filesystem::copy_options::overwrite_existing, error);
    return error ? ioFailure("copy", below(to), error.value()) : Outcome::success();
}

} // namespace KODMS::Services
