// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/FileHandle.h"

#include "services/disk/Disk.h"
#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"
#include "services/disk/WindowsCalls.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <windows.h>

namespace KODMS::Services {

namespace {

constexpr qint64 LargestPiece = qint64{1} << 30;
constexpr qint64 NanosecondsATick = 100;
constexpr qint64 TicksTo1970 = 116444736000000000; // from 1601; nanoseconds from then would not fit
/// Others may read, replace and remove what we have open, as elsewhere.
constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
/// The lock lies behind every content: here a lock keeps its bytes from being read.
constexpr DWORD LockOffsetHigh = 0x40000000;

HANDLE systemHandle(std::intptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle); // NOLINT(performance-no-int-to-ptr)
}

DWORD piece(qint64 size)
{
    return static_cast<DWORD>(std::min(size, LargestPiece));
}

OVERLAPPED at(qint64 offset)
{
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset & 0xffffffff);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

bool isSameFile(HANDLE one, HANDLE other)
{
    BY_HANDLE_FILE_INFORMATION first{};
    BY_HANDLE_FILE_INFORMATION second{};
    return ::GetFileInformationByHandle(one, &first) &&
           ::GetFileInformationByHandle(other, &second) &&
           first.dwVolumeSerialNumber == second.dwVolumeSerialNumber &&
           first.nFileIndexHigh == second.nFileIndexHigh &&
           first.nFileIndexLow == second.nFileIndexLow;
}

/// Whether the path still leads to the open file: one that is removed may only have lost its name,
/// and wait under another for those who read it.
bool isAtPath(HANDLE handle, const QString &path)
{
    const HANDLE found = ::CreateFileW(windowsPath(path).c_str(), 0, ShareAll, nullptr,
                                       OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (found == INVALID_HANDLE_VALUE)
        return false;
    const bool isSame = isSameFile(handle, found);
    ::CloseHandle(found);
    return isSame;
}

Outcome failed(const char *doing, const QString &path)
{
    return ioFailure(doing, path, lastErrno());
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
        ::CloseHandle(systemHandle(m_handle));
}

Result<FileHandle> FileHandle::openForReading(const QString &path)
{
    const HANDLE handle = ::CreateFileW(windowsPath(path).c_str(), GENERIC_READ, ShareAll, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        const int error = lastErrno();
        const DWORD attributes = ::GetFileAttributesW(windowsPath(path).c_str());
        const bool isFolder =
            attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        return ioFailure("open", path, isFolder ? EISDIR : error);
    }
    FileHandle file(reinterpret_cast<Native>(handle), path);
    if (::GetFileType(handle) != FILE_TYPE_DISK)
        return ioFailure("open", path, EINVAL);
    return Result<FileHandle>(std::move(file));
}

Result<FileHandle> FileHandle::createNew(const QString &path)
{
    const HANDLE handle =
        ::CreateFileW(windowsPath(path).c_str(), GENERIC_READ | GENERIC_WRITE, ShareAll, nullptr,
                      CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return failed("create", path);
    return FileHandle(reinterpret_cast<Native>(handle), path);
}

Result<qint64> FileHandle::read(char *buffer, qint64 size)
{
    DWORD got = 0;
    if (!::ReadFile(systemHandle(m_handle), buffer, piece(size), &got, nullptr))
        return failed("read", m_path);
    return qint64{got};
}

Outcome FileHandle::write(const char *data, qint64 size)
{
    while (size > 0) {
        DWORD put = 0;
        if (!::WriteFile(systemHandle(m_handle), data, piece(size), &put, nullptr))
            return failed("write", m_path);
        data += put;
        size -= put;
    }
    return Outcome::success();
}

Outcome FileHandle::writeAt(qint64 offset, const char *data, qint64 size)
{
    const HANDLE handle = systemHandle(m_handle);
    LARGE_INTEGER before{};
    if (!::SetFilePointerEx(handle, LARGE_INTEGER{}, &before, FILE_CURRENT))
        return failed("write", m_path);
    while (size > 0) {
        DWORD put = 0;
        OVERLAPPED place = at(offset);
        if (!::WriteFile(handle, data, piece(size), &put, &place))
            return failed("write", m_path);
        data += put;
        offset += put;
        size -= put;
    }
    // Such a write moves the place at which write() goes on.
    if (!::SetFilePointerEx(handle, before, nullptr, FILE_BEGIN))
        return failed("write", m_path);
    return Outcome::success();
}

Outcome FileHandle::sync()
{
    return ::FlushFileBuffers(systemHandle(m_handle)) ? Outcome::success() : failed("sync", m_path);
}

/// Left alone: a file with the system's read-only mark can be neither replaced nor removed.
Outcome FileHandle::makeReadOnly()
{
    return Outcome::success();
}

bool FileHandle::cloneFrom(const FileHandle &source)
{
    Q_UNUSED(source)
    return false;
}

Outcome FileHandle::close()
{
    if (!isOpen())
        return Outcome::success();
    return ::CloseHandle(systemHandle(std::exchange(m_handle, -1))) ? Outcome::success()
                                                                    : failed("close", m_path);
}

Result<FileHandle::Stamp> FileHandle::stamp() const
{
    FILE_BASIC_INFO times{};
    FILE_STANDARD_INFO info{};
    const HANDLE handle = systemHandle(m_handle);
    if (!::GetFileInformationByHandleEx(handle, FileBasicInfo, &times, sizeof times) ||
        !::GetFileInformationByHandleEx(handle, FileStandardInfo, &info, sizeof info))
        return failed("stat", m_path);
    Stamp stamp;
    stamp.size = info.EndOfFile.QuadPart;
    stamp.modified = (times.LastWriteTime.QuadPart - TicksTo1970) * NanosecondsATick;
    stamp.linked = info.NumberOfLinks > 0 && !info.DeletePending && isAtPath(handle, m_path);
    return stamp;
}

bool FileHandle::lock(bool wait)
{
    OVERLAPPED place{};
    place.OffsetHigh = LockOffsetHigh;
    const DWORD how = LOCKFILE_EXCLUSIVE_LOCK | (wait ? 0 : LOCKFILE_FAIL_IMMEDIATELY);
    if (::LockFileEx(systemHandle(m_handle), how, 0, 1, 0, &place))
        return true;
    errno = lastErrno();
    return false;
}

/// The file system keeps a journal of its own for what happens to names.
Outcome syncFolder(const QString &path)
{
    const DWORD attributes = ::GetFileAttributesW(windowsPath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return failed("sync folder", path);
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? Outcome::success()
                                                        : ioFailure("sync folder", path, ENOTDIR);
}

Outcome makeFolder(const QString &path)
{
    std::error_code error;
    Disk::createFolders(fsPath(path), error);
    return error ? ioFailure("create folder", path, error.value()) : Outcome::success();
}

} // namespace KODMS::Services
