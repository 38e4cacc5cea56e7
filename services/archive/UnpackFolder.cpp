// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/UnpackFolder.h"

#include "services/disk/Disk.h"
#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"
#include "services/disk/RunAside.h"

#include <QDir>
#include <QUuid>

namespace KODMS::Services {

namespace {

const QString Prefix = QStringLiteral(".kodms-unpack-");
const QString LockSuffix = QStringLiteral(".lock");
constexpr std::size_t LargestSmallFile = std::size_t{1} << 18;

void removeAll(const QString &path)
{
    std::error_code ignored;
    Disk::removeAll(fsPath(path), ignored);
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
    Disk::createFolders(fsPath(path), error);
    return error ? ioFailure("create folder", path, error.value()) : Outcome::success();
}

} // namespace

UnpackFolder::UnpackFolder(QString path, FileLock lock)
    : m_path(std::move(path)), m_lock(std::move(lock)), m_writers(std::make_unique<FileWriters>())
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
    m_writers.reset();
    m_file = FileHandle(); // some systems keep the folder of a file that is open
    if (!m_path.isEmpty())
        removeAll(m_path);
}

void UnpackFolder::abandon()
{
    m_writers.reset();
    runAside([path = std::exchange(m_path, QString()),
              file = std::make_shared<FileHandle>(std::move(m_file)),
              lock = std::make_shared<FileLock>(std::move(m_lock))] {
        *file = FileHandle();
        removeAll(path);
    });
}

Outcome UnpackFolder::folder(const QString &path)
{
    if (m_folders.contains(path))
        return Outcome::success();
    m_folders.insert(path);
    return makeFolders(below(path));
}

Outcome UnpackFolder::makeFolderOf(const QString &path)
{
    const int slash = path.lastIndexOf(QLatin1Char('/'));
    return slash > 0 ? folder(path.left(slash)) : Outcome::success();
}

Outcome UnpackFolder::beginFile(const QString &path)
{
    if (Outcome made = makeFolderOf(path); !made)
        return made;
    m_filePath = below(path);
    m_content.clear();
    if (!m_files.contains(path)) {
        m_files.insert(path);
        return Outcome::success();
    }
    // A later version of a file in the same archive replaces the earlier one.
    if (Outcome written = m_writers->drain(); !written)
        return written;
    std::error_code error;
    Disk::remove(fsPath(m_filePath), error);
    return error ? ioFailure("replace", m_filePath, error.value()) : Outcome::success();
}

Outcome UnpackFolder::openFile()
{
    Result<FileHandle> created = FileHandle::createNew(m_filePath);
    if (!created)
        return created.outcome;
    m_file = std::move(created.value);
    const auto size = static_cast<qint64>(m_content.size());
    return m_file.write(m_content.data(), size);
}

Outcome UnpackFolder::data(const char *bytes, qint64 size)
{
    if (m_file.isOpen())
        return m_file.write(bytes, size);
    const std::size_t whole = m_content.size() + static_cast<std::size_t>(size);
    if (whole <= LargestSmallFile) {
        m_content.insert(m_content.end(), bytes, bytes + size);
        return Outcome::success();
    }
    const Outcome opened = openFile();
    return opened ? m_file.write(bytes, size) : opened;
}

Outcome UnpackFolder::endFile()
{
    if (m_file.isOpen())
        return m_file.close();
    return m_writers->add(m_filePath, std::move(m_content));
}

Outcome UnpackFolder::copy(const QString &from, const QString &to)
{
    if (Outcome written = m_writers->drain(); !written)
        return written;
    if (Outcome made = makeFolderOf(to); !made)
        return made;
    std::error_code error;
    Disk::copyFile(fsPath(below(from)), fsPath(below(to)), error);
    return error ? ioFailure("copy", below(to), error.value()) : Outcome::success();
}

Outcome UnpackFolder::finish()
{
    return m_writers->drain();
}

} // namespace KODMS::Services
