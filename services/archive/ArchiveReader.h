// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/archive/EntryNames.h"
#include "services/archive/EntrySource.h"
#include "services/archive/GzipFile.h"
#include "services/archive/RarSums.h"
#include "services/archive/Utf8Locale.h"

#include <limits>
#include <optional>

struct archive;
struct archive_entry;

namespace KODMS::Services {

/// Reads one archive of any known type, entry by entry. Whatever the library warns
/// of is a failure here: a warning may mean wrong bytes. For one thread, in which
/// names are UTF-8 while the object lives.
class ArchiveReader final : public EntrySource {
public:
    static constexpr qint64 AnyNumber = std::numeric_limits<qint64>::max();

    static Result<std::unique_ptr<ArchiveReader>> open(const QString &path,
                                                       qint64 maxEntries = AnyNumber);
    /// Another reader of the same archive, from its beginning, for the thread that
    /// calls; this one is only looked at.
    Result<std::unique_ptr<ArchiveReader>> again() const;
    ~ArchiveReader() override;

    ArchiveType type() const override { return m_type; }

    /// As the archive's directory tells; 0 where there is none.
    quint64 expectedEntries() const { return m_expected.value_or(0); }

    Outcome next(ArchiveEntry &entry, bool &hasEntry) override;
    Result<qint64> read(char *buffer, qint64 size) override;
    qint64 position() const override;

    Outcome damage(const QString &entryName, const QString &cause) const;

private:
    ArchiveReader(const QString &path, ArchiveType type);
    Outcome openFile();
    void chooseFormat();
    Outcome readZipDirectory(qint64 maxEntries);
    Outcome endOfArchive();
    Outcome endOfEntry() const;
    Outcome failure(const QString &entryName) const;
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
