// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/disk/FileHandle.h"

namespace KODMS::Services {

/// A lock file that tells other processes that its owner lives: the system drops
/// the lock with the process, however it ends, so a file without a lock is a
/// remain. Removed with the object.
class FileLock {
public:
    /// Creates `path`, which must be a name nobody else chooses, and locks it.
    static Result<FileLock> create(const QString &path);
    /// True when somebody holds the lock file. One that nobody holds is removed.
    static bool isAlive(const QString &path);

    FileLock() = default;
    FileLock(FileLock &&) = default;
    FileLock &operator=(FileLock &&) = default;
    ~FileLock();
    FileLock(const FileLock &) = delete;
    FileLock &operator=(const FileLock &) = delete;

private:
    explicit FileLock(FileHandle file) : m_file(std::move(file)) {}

    FileHandle m_file;
};

} // namespace KODMS::Services
