// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/Disk.h"

#include "services/disk/FsPath.h"
#include "services/disk/WindowsCalls.h"

#include <QUuid>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <cwchar>
#include <memory>
#include <new>

#include <windows.h>

namespace KODMS::Services::Disk {

namespace {

std::wstring native(const Path &path)
{
    return windowsPath(fromFsPath(path));
}

void setError(std::error_code &error, int number)
{
    error.assign(number, std::generic_category());
}

void setLast(std::error_code &error)
{
    setError(error, lastErrno());
}

/// Whether `said` succeeded; else says why.
bool passed(BOOL said, std::error_code &error)
{
    if (said)
        error.clear();
    else
        setLast(error);
    return said != 0;
}

FileType typeOfAttributes(DWORD attributes)
{
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        return FileType::symlink;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileType::directory : FileType::regular;
}

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD MoveNow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;

bool isFolderThere(const std::wstring &name)
{
    const DWORD attributes = ::GetFileAttributesW(name.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// A free name in the folder of `name`, for a moment.
std::wstring nameBeside(const std::wstring &name, const char *suffix)
{
    const QString free = QStringLiteral(".kodms-") + QUuid::createUuid().toString(QUuid::Id128) +
                         QLatin1String(suffix);
    return name.substr(0, name.rfind(L'\\') + 1) + free.toStdWString();
}

/// The other way to rename, which newer systems have: whoever reads what stood at `to` keeps
/// reading it.
bool renamedOverOpenFile(const std::wstring &from, const std::wstring &to)
{
    constexpr auto renameInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22); // not in every header
    const HANDLE opened =
        ::CreateFileW(from.c_str(), DELETE | SYNCHRONIZE, ShareAll, nullptr, OPEN_EXISTING,
                      FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        return false;
    const std::size_t bytes = to.size() * sizeof(wchar_t);
    std::vector<std::max_align_t> room(
        (sizeof(FILE_RENAME_INFO) + bytes) / sizeof(std::max_align_t) + 1);
    auto *info = new (room.data()) FILE_RENAME_INFO{};
    info->Flags = FILE_RENAME_FLAG_REPLACE_IF_EXISTS | FILE_RENAME_FLAG_POSIX_SEMANTICS;
    info->FileNameLength = static_cast<DWORD>(bytes);
    std::memcpy(info->FileName, to.c_str(), bytes + sizeof(wchar_t));
    const auto size = static_cast<DWORD>(sizeof(FILE_RENAME_INFO) + bytes);
    const bool renamed = ::SetFileInformationByHandle(opened, renameInfoEx, info, size) != 0;
    ::CloseHandle(opened);
    return renamed;
}

/// Where neither way replaces a file that is being read, as on a network drive: that file is
/// moved aside first, and back when the new one cannot take its name. What stands aside is no
/// name that anybody sweeps: it is all there is until the new file has its name.
BOOL renamedBehindAside(const std::wstring &from, const std::wstring &to)
{
    const std::wstring aside = nameBeside(to, ".old");
    if (!::MoveFileExW(to.c_str(), aside.c_str(), MOVEFILE_WRITE_THROUGH))
        return FALSE;
    if (!::MoveFileExW(from.c_str(), to.c_str(), MoveNow)) {
        const DWORD error = ::GetLastError();
        ::MoveFileExW(aside.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH);
        ::SetLastError(error);
        return FALSE;
    }
    ::DeleteFileW(aside.c_str());
    return TRUE;
}

/// An empty folder gives way to another, as elsewhere.
void renameOverFolder(const std::wstring &from, const std::wstring &to, std::error_code &error)
{
    if (!isFolderThere(from))
        setError(error, EISDIR);
    else if (passed(::RemoveDirectoryW(to.c_str()), error) &&
             !passed(::MoveFileExW(from.c_str(), to.c_str(), MoveNow), error))
        ::CreateDirectoryW(to.c_str(), nullptr);
}

/// The name is free when this returns, whoever still reads. Newer systems do that by themselves;
/// elsewhere the file gets another name first, under which it waits for its readers.
BOOL removedFile(const std::wstring &name)
{
    constexpr auto dispositionEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);
    constexpr DWORD deletes = 0x1;
    constexpr DWORD asElsewhere = 0x2;
    const HANDLE opened = ::CreateFileW(name.c_str(), DELETE, ShareAll, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        return FALSE;
    DWORD how = deletes | asElsewhere;
    const bool done = ::SetFileInformationByHandle(opened, dispositionEx, &how, sizeof how) != 0;
    ::CloseHandle(opened);
    if (done)
        return TRUE;
    const std::wstring aside = nameBeside(name, ".part");
    const bool isAside = ::MoveFileExW(name.c_str(), aside.c_str(), 0) != 0;
    if (::DeleteFileW(isAside ? aside.c_str() : name.c_str()))
        return TRUE;
    const DWORD error = ::GetLastError();
    if (isAside)
        ::MoveFileExW(aside.c_str(), name.c_str(), 0);
    ::SetLastError(error);
    return FALSE;
}

/// Whether another program has a file below open. Asked by opening each for us alone, which is
/// refused then.
bool isUsedBelow(const Path &folder)
{
    std::error_code ignored;
    for (const Path &child : children(folder, ignored)) {
        const std::wstring name = native(child);
        if (isFolderThere(name)) {
            if (isUsedBelow(child))
                return true;
            continue;
        }
        const HANDLE opened = ::CreateFileW(name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                            FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
        if (opened == INVALID_HANDLE_VALUE && ::GetLastError() == ERROR_SHARING_VIOLATION)
            return true;
        if (opened != INVALID_HANDLE_VALUE)
            ::CloseHandle(opened);
    }
    return false;
}

using CloseFind = BOOL(WINAPI *)(HANDLE);

bool isDots(const wchar_t *name)
{
    return std::wcscmp(name, L".") == 0 || std::wcscmp(name, L"..") == 0;
}

} // namespace

FileType typeOf(const Path &path, std::error_code &error)
{
    error.clear();
    const DWORD attributes = ::GetFileAttributesW(native(path).c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES)
        return typeOfAttributes(attributes);
    setLast(error);
    return error == std::errc::no_such_file_or_directory ? FileType::not_found : FileType::none;
}

FileType typeBehindLinks(const Path &path, std::error_code &error)
{
    const FileType type = typeOf(path, error);
    if (type != FileType::symlink)
        return type;
    const HANDLE opened = ::CreateFileW(native(path).c_str(), 0, ShareAll, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (!passed(opened != INVALID_HANDLE_VALUE, error))
        return FileType::not_found;
    BY_HANDLE_FILE_INFORMATION info{};
    const bool known = passed(::GetFileInformationByHandle(opened, &info), error);
    ::CloseHandle(opened);
    return known ? typeOfAttributes(info.dwFileAttributes & ~DWORD{FILE_ATTRIBUTE_REPARSE_POINT})
                 : FileType::none;
}

std::uintmax_t fileSize(const Path &path, std::error_code &error)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!passed(::GetFileAttributesExW(native(path).c_str(), GetFileExInfoStandard, &data), error))
        return static_cast<std::uintmax_t>(-1);
    return (std::uintmax_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow;
}

std::int64_t modifiedAt(const Path &path, std::error_code &error)
{
    constexpr std::int64_t ticksASecond = 10000000;
    constexpr std::int64_t secondsTo1970 = 11644473600; // from 1601
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!passed(::GetFileAttributesExW(native(path).c_str(), GetFileExInfoStandard, &data), error))
        return 0;
    const FILETIME &time = data.ftLastWriteTime;
    const std::int64_t ticks = (std::int64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
    return ticks / ticksASecond - secondsTo1970;
}

std::vector<Path> children(const Path &folder, std::error_code &error)
{
    std::vector<Path> found;
    WIN32_FIND_DATAW data{};
    const HANDLE search = ::FindFirstFileW((native(folder) + L"\\*").c_str(), &data);
    if (!passed(search != INVALID_HANDLE_VALUE, error))
        return found;
    const std::unique_ptr<void, CloseFind> closing(search, &::FindClose);
    do {
        if (!isDots(data.cFileName))
            found.push_back(folder / data.cFileName);
    } while (::FindNextFileW(search, &data));
    if (::GetLastError() != ERROR_NO_MORE_FILES)
        setLast(error);
    return found;
}

bool createFolders(const Path &path, std::error_code &error)
{
    const FileType type = typeBehindLinks(path, error);
    if (type == FileType::directory)
        return false;
    if (type != FileType::not_found) {
        setError(error, type == FileType::none ? error.value() : ENOTDIR);
        return false;
    }
    const Path above = path.parent_path();
    if (!above.empty() && above != path) {
        createFolders(above, error);
        if (error)
            return false;
    }
    if (passed(::CreateDirectoryW(native(path).c_str(), nullptr), error))
        return true;
    if (error == std::errc::file_exists && typeOf(path, error) != FileType::directory)
        setError(error, ENOTDIR);
    return false;
}

void rename(const Path &from, const Path &to, std::error_code &error)
{
    const std::wstring old = native(from);
    const std::wstring name = native(to);
    std::error_code unknown;
    const FileType standing = typeOf(to, unknown);
    if (isThere(standing) && standing != FileType::directory && isFolderThere(old)) {
        setError(error, ENOTDIR);
        return;
    }
    if (passed(::MoveFileExW(old.c_str(), name.c_str(), MoveNow), error) ||
        error != std::errc::permission_denied)
        return;
    if (standing == FileType::directory)
        renameOverFolder(old, name, error);
    else if (renamedOverOpenFile(old, name))
        error.clear();
    else if (isThere(standing))
        passed(renamedBehindAside(old, name), error);
    else if (isFolderThere(old) && isUsedBelow(from))
        setError(error, EBUSY);
}

bool remove(const Path &path, std::error_code &error)
{
    const std::wstring name = native(path);
    if (passed(isFolderThere(name) ? ::RemoveDirectoryW(name.c_str()) : removedFile(name), error))
        return true;
    if (error == std::errc::no_such_file_or_directory)
        error.clear();
    return false;
}

void removeAll(const Path &path, std::error_code &error)
{
    std::error_code first;
    if (typeOf(path, error) == FileType::directory) {
        for (const Path &child : children(path, first)) {
            removeAll(child, error);
            if (error && !first)
                first = error;
        }
    }
    Disk::remove(path, error);
    if (first)
        error = first;
}

void copyFile(const Path &from, const Path &to, std::error_code &error)
{
    passed(::CopyFileW(native(from).c_str(), native(to).c_str(), FALSE), error);
}

} // namespace KODMS::Services::Disk
