// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/Disk.h"

#include <cerrno>

#include <sys/stat.h>

namespace KODMS::Services::Disk {

namespace fs = std::filesystem;

FileType typeOf(const Path &path, std::error_code &error)
{
    return fs::symlink_status(path, error).type();
}

FileType typeBehindLinks(const Path &path, std::error_code &error)
{
    return fs::status(path, error).type();
}

std::uintmax_t fileSize(const Path &path, std::error_code &error)
{
    return fs::file_size(path, error);
}

std::int64_t modifiedAt(const Path &path, std::error_code &error)
{
    struct stat info {};

    error.clear();
    if (::lstat(path.c_str(), &info) != 0)
        error.assign(errno, std::generic_category());
    return info.st_mtime;
}

std::vector<Path> children(const Path &folder, std::error_code &error)
{
    std::vector<Path> found;
    for (auto it = fs::directory_iterator(folder, error); !error && it != fs::directory_iterator();
         it.increment(error))
        found.push_back(it->path());
    return found;
}

bool createFolders(const Path &path, std::error_code &error)
{
    return fs::create_directories(path, error);
}

void rename(const Path &from, const Path &to, std::error_code &error)
{
    fs::rename(from, to, error);
}

bool remove(const Path &path, std::error_code &error)
{
    return fs::remove(path, error);
}

void removeAll(const Path &path, std::error_code &error)
{
    fs::remove_all(path, error);
}

void copyFile(const Path &from, const Path &to, std::error_code &error)
{
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, error);
}

} // namespace KODMS::Services::Disk
