// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/WindowsCalls.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <system_error>

#include <windows.h>

namespace KODMS::Services {

std::wstring windowsPath(const QString &path)
{
    const QString verbatim = QStringLiteral("\\\\?\\");
    QString native = QDir::toNativeSeparators(path);
    if (native.startsWith(verbatim))
        return native.toStdWString();
    native = QDir::toNativeSeparators(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    const bool isShare = native.startsWith(QLatin1String("\\\\"));
    const QString whole =
        isShare ? QString(verbatim + QStringLiteral("UNC\\") + native.mid(2)) : verbatim + native;
    return whole.toStdWString();
}

int lastErrno()
{
    const DWORD error = ::GetLastError();
    switch (error) {
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
        return EBUSY;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
        return ENOENT;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return ENOSPC;
    case ERROR_WRITE_PROTECT:
        return EROFS;
    case ERROR_DIRECTORY:
        return ENOTDIR;
    case ERROR_FILENAME_EXCED_RANGE:
        return ENAMETOOLONG;
    default:
        break;
    }
    const std::error_condition condition =
        std::system_category().default_error_condition(static_cast<int>(error));
    return condition.category() == std::generic_category() ? condition.value() : EIO;
}

} // namespace KODMS::Services
