// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>
#include <system_error>
#include <vector>

namespace KODMS::Services::Disk {

/// What the standard library does with names on a disk, but for two things: paths may be longer
/// than Windows takes them by default, and what stands in `error` is an errno value everywhere.
/// Everything clears `error` on success.
using Path = std::filesystem::path;
using FileType = std::filesystem::file_type;

/// not_found, and an error, when nothing is there.
FileType typeOf(const Path &path, std::error_code &error);
/// The same of what a link leads to.
FileType typeBehindLinks(const Path &path, std::error_code &error);

/// Whether that was something; false also when the system did not tell.
inline bool isThere(FileType type)
{
    return type != FileType::not_found && type != FileType::none;
}

std::uintmax_t fileSize(const Path &path, std::error_code &error);
/// When the content was last changed: seconds since 1970. Of a link, its own.
std::int64_t modifiedAt(const Path &path, std::error_code &error);
/// Of a folder, in no order, without "." and "..".
std::vector<Path> children(const Path &folder, std::error_code &error);

/// Makes the folders above, too. True when there was something to make.
bool createFolders(const Path &path, std::error_code &error);
/// Replaces a file that stands at `to`, also one that somebody is reading, or an empty folder by
/// another folder. One that somebody holds for himself alone stays what it was: EBUSY.
void rename(const Path &from, const Path &to, std::error_code &error);
/// A file, whose name is free at once also when somebody is reading it, or an empty folder. False,
/// without an error, when nothing was there.
bool remove(const Path &path, std::error_code &error);
/// A folder with all that is in it; goes on where something cannot be removed.
void removeAll(const Path &path, std::error_code &error);
/// Replaces what stands at `to`.
void copyFile(const Path &from, const Path &to, std::error_code &error);

} // namespace KODMS::Services::Disk
