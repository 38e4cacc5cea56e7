// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>

#include <cstdint>

namespace KODMS::Services {

/// An open file of the operating system, closed with the object. Used where Qt's
/// own files are too far from the disk: syncing, cloning, telling why it failed.
class FileHandle {
public:
    FileHandle() = default;
    FileHandle(FileHandle &&other) noexcept;
    FileHandle &operator=(FileHandle &&other) noexcept;
    ~FileHandle();
    FileHandle(const FileHandle &) = delete;
    FileHandle &operator=(const FileHandle &) = delete;

    /// Regular files only; never waits for a writer of a pipe.
    static Result<FileHandle> openForReading(const QString &path);
    /// Fails when something stands at `path`, be it a dangling link.
    static Result<FileHandle> createNew(const QString &path);

    /// 0 at the end of the file.
    Result<qint64> read(char *buffer, qint64 size);
    /// All of it or failure.
    Outcome write(const char *data, qint64 size);
    /// The same in the middle of the file; write() goes on where it was.
    Outcome writeAt(qint64 offset, const char *data, qint64 size);
    /// The content is on the disk when this returns.
    Outcome sync();
    Outcome makeReadOnly();
    /// Shares the blocks of `source` with this empty file; false where the file
    /// system cannot.
    bool cloneFrom(const FileHandle &source);
    /// Closes now and says whether the system still had something to complain of.
    Outcome close();

    struct Stamp {
        qint64 size = 0;
        qint64 modified = 0; ///< nanoseconds
        bool linked = true;  ///< the name under which it was opened was not removed

        bool operator==(const Stamp &other) const
        {
            return size == other.size && modified == other.modified;
        }
    };

    Result<Stamp> stamp() const;
    /// Takes the system's lock of the file, which dies with the process. Waits when asked to.
    bool lock(bool wait);

    bool isOpen() const { return m_handle != -1; }

    const QString &path() const { return m_path; }

private:
#ifdef _WIN32
    using Native = std::intptr_t;
#else
    using Native = int;
#endif

    FileHandle(Native handle, QString path);

    Native m_handle = -1;
    QString m_path;
};

/// Creations, renames and removals in the folder are on the disk when this returns.
Outcome syncFolder(const QString &path);

/// Creates the folder, and those above it, so that they survive a power cut.
Outcome makeFolder(const QString &path);

} // namespace KODMS::Services
