// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/FsPath.h"

#include <QFile>

namespace KODMS::Services {

std::filesystem::path fsPath(const QString &path)
{
#ifdef _WIN32
    return std::filesystem::path(path.toStdWString());
#else
    return std::filesystem::path(QFile::encodeName(path).toStdString());
#endif
}

QString fromFsPath(const std::filesystem::path &path)
{
#ifdef _WIN32
    return QString::fromStdWString(path.generic_wstring());
#else
    return QFile::decodeName(path.c_str());
#endif
}

QByteArray libraryPath(const QString &path)
{
#ifdef _WIN32
    return path.toUtf8();
#else
    return QFile::encodeName(path);
#endif
}

QByteArray nameBytes(const std::filesystem::path &path)
{
#ifdef _WIN32
    return fromFsPath(path.filename()).toUtf8();
#else
    return QByteArray::fromStdString(path.filename().string());
#endif
}

} // namespace KODMS::Services
