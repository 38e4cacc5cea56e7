// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/FileLock.h"
#include "services/disk/Disk.h"

#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"

#include <cerrno>

namespace KODMS::Services {

namespace {

constexpr int MaxTries = 100;

} // namespace

Result<FileLock> FileLock::create(const QString &path)
{
    // Between the creation and the lock another process may take the file for a
    // remain and remove it; then it is made again.
    for (int i = 0; i < MaxTries; ++i) {
        Result<FileHandle> file = FileHandle::createNew(path);
        if (!file)
            return file.outcome;
        if (!file.value.lock(true))
            return ioFailure("lock", path, errno);
        const auto stamp = file.value.stamp();
        if (stamp && stamp.value.linked)
            return FileLock(std::move(file.value));
    }
    return ioFailure("lock", path, EAGAIN);
}

bool FileLock::isAlive(const QString &path)
{
    std::error_code ignored;
    Result<FileHandle> file = FileHandle::openForReading(path);
    if (!file) // somebody else's that we may not open is taken for alive
        return Disk::isThere(Disk::typeBehindLinks(fsPath(path), ignored));
    if (!file.value.lock(false))
        return true;
    Disk::remove(fsPath(path), ignored);
    return false;
}

FileLock::~FileLock()
{
    if (!m_file.isOpen())
        return;
    std::error_code ignored;
    Disk::remove(fsPath(m_file.path()), ignored);
}

} // namespace KODMS::Services
