// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Services {

enum class ArchiveType { Unknown, Zip, Rar, TarGzip, Tar, SevenZip };

/// What the file is by its content, whatever it is called. Unknown also when it
/// cannot be read.
ArchiveType sniffArchiveType(const QString &path);

/// The type under which a file is recorded: "zip", "rar", "tgz", "tar" or "7z" by
/// content. A CAM product's job archive is told by its suffix alone, whatever
/// archive it is inside: "kos". Empty when the content is no archive.
QString recordedArchiveType(const QString &path);

} // namespace KODMS::Services
