// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/archive/ArchiveType.h"
#include "services/archive/EntryNames.h"
#include "services/archive/GzipFile.h"
#include "services/archive/RarSums.h"
#include "services/archive/Utf8Locale.h"
#include "services/notices/Outcome.h"

#include <memory>
#include <optional>

struct archive;
struct archive_entry;

namespace KODMS::Services {

struct ArchiveEntry {
    enum class Kind { File, Folder, SymbolicLink, HardLink, Other };

    Kind kind = Kind::Other;
    QString name;       ///< as the archive has it
    QString linkTarget; ///< of the two links
};

/// Reads one archive of any known type, entry by entry. Whatever the library warns
/// of is a failure here: a warning may mean wrong bytes. For one thread, in which
/// names are UTF-8 while the object lives.
class ArchiveReader {
public:
    static Result<std::unique_ptr<ArchiveReader>> open(const QString &path);
    ~ArchiveReader();
    ArchiveReader(const ArchiveReader &) = delete;
    ArchiveReader &operator=(const ArchiveReader &) = delete;

    ArchiveType type() const { return m_type; }

    /// False in `hasEntry` at the end, which is a failure when the archive's own
    /// directory names more entries than were found.
    Outcome next(ArchiveEntry &entry, bool &hasEntry);
    /// Bytes of the present entry; 0 at its end.
    Result<qint64> read(char *buffer, qint64 size);
    /// How far in the archive file the reading has come.
    qint64 position() const;

private:
    ArchiveReader(const QString &path, ArchiveType type);
    Outcome openFile();
    void chooseFormat();
    Outcome openZip();
    Outcome endOfArchive();
    Outcome endOfEntry() const;
    Outcome failure(const QString &entryName) const;
    Outcome damage(const QString &entryName, const QString &cause) const;
    Outcome describe(archive_entry *raw, ArchiveEntry &entry);

    Utf8Locale m_locale;
    QString m_path;
    ArchiveType m_type;
    archive *m_archive;
    EntryNames m_names;
    GzipFile m_gzip;
    RarSums m_rarSums;
    std::optional<quint64> m_expected; ///< entries that the archive's directory names
    bool m_isEmptyZip = false;
    quint64 m_found = 0;
    QString m_current;
    quint32 m_sum = 0; ///< CRC-32 of what was read of the present entry
};

} // namespace KODMS::Services
