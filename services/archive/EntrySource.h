// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/archive/ArchiveType.h"
#include "services/notices/Outcome.h"

#include <memory>

namespace KODMS::Services {

struct ArchiveEntry {
    enum class Kind { File, Folder, SymbolicLink, HardLink, Other };

    Kind kind = Kind::Other;
    QString name;       ///< as the archive has it
    QString linkTarget; ///< of the two links
};

/// The entries of one archive, each once and in order. For one thread.
class EntrySource {
public:
    /// The fastest way to read the archive whole. Refuses a directory of more than
    /// `maxEntries` before it is read.
    static Result<std::unique_ptr<EntrySource>> open(const QString &path, qint64 maxEntries);
    virtual ~EntrySource() = default;
    EntrySource(const EntrySource &) = delete;
    EntrySource &operator=(const EntrySource &) = delete;

    virtual ArchiveType type() const = 0;
    /// False in `hasEntry` at the end, which is a failure when the archive's own
    /// directory names more entries than were found.
    virtual Outcome next(ArchiveEntry &entry, bool &hasEntry) = 0;
    /// Bytes of the present entry; 0 at its end.
    virtual Result<qint64> read(char *buffer, qint64 size) = 0;
    /// How far in the archive file the reading has come.
    virtual qint64 position() const = 0;

protected:
    EntrySource() = default;
};

} // namespace KODMS::Services
