// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFile>

#include <archive.h>

#ifdef _WIN32
#include "services/disk/WindowsCalls.h"
#endif

namespace KODMS::Services {

/// Lets the archive library open the file of that name, whatever the system thinks names are.
/// What it says: ARCHIVE_OK or an error.
inline int openArchive(archive *reader, const QString &path, std::size_t blockSize)
{
#ifdef _WIN32
    return archive_read_open_filename_w(reader, windowsPath(path).c_str(), blockSize);
#else
    return archive_read_open_filename(reader, QFile::encodeName(path).constData(), blockSize);
#endif
}

/// The same for an archive that is to be written.
inline int createArchive(archive *writer, const QString &path)
{
#ifdef _WIN32
    return archive_write_open_filename_w(writer, windowsPath(path).c_str());
#else
    return archive_write_open_filename(writer, QFile::encodeName(path).constData());
#endif
}

} // namespace KODMS::Services
