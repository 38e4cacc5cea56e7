// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/FileHandle.h"

#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#ifdef __linux__
#include <linux/fs.h>
#endif

namespace KODMS::Services {

namespace {

constexpr mode_t NewFileMode = 0666;
constexpr mode_t ReadOnlyMode = 0444;

template <typename Call> auto uninterrupted(Call call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

int opened(const QString &path, int flags)
{
    const QByteArray name = QFile::encodeName(path);
    return uninterrupted(
        [&] { return ::open(name.constData(), flags | O_CLOEXEC | O_NOCTTY, NewFileMode); });
}

} // namespace

FileHandle::FileHandle(Native handle, QString path) : m_handle(handle), m_path(std::move(path)) {}

FileHandle::FileHandle(FileHandle &&other) noexcept
    : m_handle(std::exchange(other.m_handle, -1)), m_path(std::move(other.m_path))
{
}

FileHandle &FileHandle::operator=(FileHandle &&other) noexcept
{
    std::swap(m_handle, other.m_handle);
    std::swap(m_path, other.m_path);
    return *this;
}

FileHandle::~FileHandle()
{
    if (isOpen())
        ::close(m_handle);
}

Result<FileHandle> FileHandle::openForReading(const QString &path)
{
    FileHandle file(opened(path, O_RDONLY | O_NONBLOCK), path);
    if (!file.isOpen())
        return ioFailure("open", path, errno);

    struct stat info {};

    if (::fstat(file.m_handle, &info) != 0)
        return ioFailure("stat", path, errno);
    if (!S_ISREG(info.st_mode))
        return ioFailure("open", path, S_ISDIR(info.st_mode) ? EISDIR : EINVAL);
    return Result<FileHandle>(std::move(file));
}

Result<FileHandle> FileHandle::createNew(const QString &path)
{
    FileHandle file(opened(path, O_RDWR | O_CREAT | O_EXCL), path);
    if (!file.isOpen())
        return ioFailure("create", path, errno);
    return Result<FileHandle>(std::move(file));
}

Result<qint64> FileHandle::read(char *buffer, qint64 size)
{
    const ssize_t got =
        uninterrupted([&] { return ::read(m_handle, buffer, static_cast<std::size_t>(size)); });
    if (got < 0)
        return ioFailure("read", m_path, errno);
    return qint64{got};
}

Outcome FileHandle::write(const char *data, qint64 size)
{
    while (size > 0) {
        const ssize_t put =
            uninterrupted([&] { return ::write(m_handle, data, static_cast<std::size_t>(size)); });
        if (put < 0)
            return ioFailure("write", m_path, errno);
        data += put;
        size -= put;
    }
    return Outcome::success();
}

Outcome FileHandle::writeAt(qint64 offset, const char *data, qint64 size)
{
    while (size > 0) {
        const ssize_t put = uninterrupted(
            [&] { return ::pwrite(m_handle, data, static_cast<std::size_t>(size), offset); });
        if (put < 0)
            return ioFailure("write", m_path, errno);
        data += put;
        offset += put;
        size -= put;
    }
    return Outcome::success();
}

Outcome FileHandle::sync()
{
    if (uninterrupted([&] { return ::fsync(m_handle); }) != 0)
        return ioFailure("sync", m_path, errno);
    return Outcome::success();
}

Outcome FileHandle::makeReadOnly()
{
    if (::fchmod(m_handle, ReadOnlyMode) != 0)
        return ioFailure("protect", m_path, errno);
    return Outcome::success();
}

bool FileHandle::cloneFrom(const FileHandle &source)
{
#ifdef FICLONE
    return ::ioctl(m_handle, FICLONE, source.m_handle) == 0;
#else
    Q_UNUSED(source)
    return false;
#endif
}

Outcome FileHandle::close()
{
    if (!isOpen())
        return Outcome::success();
    if (::close(std::exchange(m_handle, -1)) != 0 && errno != EINTR)
        return ioFailure("close", m_path, errno);
    return Outcome::success();
}

Result<FileHandle::Stamp> FileHandle::stamp() const
{
    struct stat info {};

    if (::fstat(m_handle, &info) != 0)
        return ioFailure("stat", m_path, errno);
    Stamp stamp;
    stamp.size = info.st_size;
    stamp.modified = qint64{info.st_mtim.tv_sec} * 1000000000 + info.st_mtim.tv_nsec;
    stamp.linked = info.st_nlink > 0;
    return stamp;
}

bool FileHandle::lock(bool wait)
{
    const int how = wait ? LOCK_EX : LOCK_EX | LOCK_NB;
    return uninterrupted([&] { return ::flock(m_handle, how); }) == 0;
}

Outcome syncFolder(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    const int handle =
        uninterrupted([&] { return ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (handle < 0)
        return ioFailure("open folder", path, errno);
    const int synced = uninterrupted([&] { return ::fsync(handle); });
    const int error = errno;
    ::close(handle);
    // Some network file systems cannot sync a folder; they order renames themselves.
    if (synced != 0 && error != EINVAL)
        return ioFailure("sync folder", path, error);
    return Outcome::success();
}

Outcome makeFolder(const QString &path)
{
    const std::filesystem::path folder = fsPath(path);
    std::error_code error;
    if (std::filesystem::is_directory(folder, error))
        return Outcome::success();
    const std::filesystem::path above = folder.parent_path();
    if (!above.empty() && above != folder) {
        if (Outcome made = makeFolder(fromFsPath(above)); !made)
            return made;
    }
    if (::mkdir(folder.c_str(), 0777) != 0) {
        const int failed = errno;
        if (failed == EEXIST && std::filesystem::is_directory(folder, error))
            return Outcome::success();
        return ioFailure("create folder", path, failed == EEXIST ? ENOTDIR : failed);
    }
    return syncFolder(fromFsPath(above.empty() ? std::filesystem::path(".") : above));
}

} // namespace KODMS::Services
