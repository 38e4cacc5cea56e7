// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/ArchiveReader.h"

#include "services/archive/ArchiveLimits.h"
#include "services/archive/EntryText.h"
#include "services/archive/ZipDirectory.h"
#include "services/disk/OpenArchive.h"

#include <QCoreApplication>
#include <QFile>

#include <archive.h>
#include <archive_entry.h>
#include <isa-l/crc.h>

namespace KODMS::Services {

namespace {

constexpr std::size_t BlockSize = std::size_t{1} << 18;

struct ArchiveReaderTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::ArchiveReader)

public:
    static QString notAnArchive(const QString &path)
    {
        return tr("不是可识别的压缩包（zip、rar、tgz、tar、7z）：%1").arg(path);
    }

    static QString unreadable(const QString &path) { return tr("无法读取文件：%1").arg(path); }

    static QString damaged(const QString &path, const QString &entry)
    {
        return entry.isEmpty() ? tr("压缩包已损坏：%1").arg(path)
                               : tr("压缩包已损坏：%1，条目 %2").arg(path, entry);
    }

    static QString unsupportedRar(const QString &path)
    {
        return tr("此 rar 压缩包用了不受支持的压缩方式（例如固实压缩），请提供 zip 或 tgz "
                  "压缩包：%1")
            .arg(path);
    }

    static QString encrypted(const QString &path)
    {
        return tr("压缩包已加密，请提供未加密的压缩包：%1").arg(path);
    }

    static QString badName(const QString &path)
    {
        return tr("压缩包中有无法识别的条目名称：%1").arg(path);
    }
};

ArchiveEntry::Kind kindOf(archive_entry *raw)
{
    if (archive_entry_hardlink(raw) != nullptr)
        return ArchiveEntry::Kind::HardLink;
    switch (archive_entry_filetype(raw)) {
    case AE_IFREG:
        return ArchiveEntry::Kind::File;
    case AE_IFDIR:
        return ArchiveEntry::Kind::Folder;
    case AE_IFLNK:
        return ArchiveEntry::Kind::SymbolicLink;
    default:
        return ArchiveEntry::Kind::Other;
    }
}

/// Whether the library says that it cannot, rather than that something is wrong.
bool isBeyondLibrary(const QString &cause)
{
    for (const char *word : {"unavailable", "unsupported", "not supported"})
        if (cause.contains(QLatin1String(word), Qt::CaseInsensitive))
            return true;
    return false;
}

} // namespace

ArchiveReader::ArchiveReader(const QString &path, ArchiveType type)
    : m_path(path), m_type(type), m_archive(archive_read_new())
{
    chooseFormat();
}

ArchiveReader::~ArchiveReader()
{
    archive_read_free(m_archive);
}

void ArchiveReader::chooseFormat()
{
    switch (m_type) {
    case ArchiveType::Zip: // not the streaming reader, which believes a cut archive
        archive_read_support_format_zip_seekable(m_archive);
        break;
    case ArchiveType::Rar:
        archive_read_support_format_rar(m_archive);
        archive_read_support_format_rar5(m_archive);
        break;
    case ArchiveType::TarGzip: // through GzipFile
    case ArchiveType::Tar:
        archive_read_support_format_tar(m_archive);
        break;
    case ArchiveType::SevenZip:
        archive_read_support_format_7zip(m_archive);
        break;
    case ArchiveType::Unknown:
        break;
    }
}

Result<std::unique_ptr<ArchiveReader>> ArchiveReader::open(const QString &path, qint64 maxEntries)
{
    const ArchiveType type = sniffArchiveType(path);
    if (type == ArchiveType::Unknown) {
        const bool readable = QFile(path).open(QIODevice::ReadOnly);
        return Outcome::failure(readable ? ArchiveReaderTexts::notAnArchive(path)
                                         : ArchiveReaderTexts::unreadable(path),
                                QStringLiteral("no known archive: %1").arg(path));
    }
    std::unique_ptr<ArchiveReader> reader(new ArchiveReader(path, type));
    if (type == ArchiveType::Zip) {
        if (Outcome known = reader->readZipDirectory(maxEntries); !known)
            return known;
    }
    if (type == ArchiveType::Rar) {
        reader->m_rarSums = RarSums::read(path, maxEntries);
        if (reader->m_rarSums.isTooLong())
            return tooManyEntries(path, maxEntries);
    }
    if (Outcome opened = reader->openFile(); !opened)
        return opened;
    return reader;
}

Result<std::unique_ptr<ArchiveReader>> ArchiveReader::again() const
{
    std::unique_ptr<ArchiveReader> reader(new ArchiveReader(m_path, m_type));
    reader->m_names = m_names;
    reader->m_expected = m_expected;
    reader->m_isEmptyZip = m_isEmptyZip;
    if (Outcome opened = reader->openFile(); !opened)
        return opened;
    return reader;
}

Outcome ArchiveReader::openFile()
{
    if (m_type == ArchiveType::TarGzip)
        return m_gzip.open(m_path) && m_gzip.attachTo(m_archive) ? Outcome::success()
                                                                 : failure(QString());
    if (m_isEmptyZip) // the library takes an archive without entries for damage
        return Outcome::success();
    return openArchive(m_archive, m_path, BlockSize) == ARCHIVE_OK ? Outcome::success()
                                                                   : failure(QString());
}

Outcome ArchiveReader::readZipDirectory(qint64 maxEntries)
{
    const auto directory = ZipDirectory::read(m_path, maxEntries);
    if (!directory)
        return damage(QString(), QStringLiteral("no whole zip directory"));
    if (directory->isTooLong)
        return tooManyEntries(m_path, maxEntries);
    m_expected = directory->count;
    m_names.setUnmarked(directory->unmarkedNames);
    m_isEmptyZip = directory->isEmpty;
    return Outcome::success();
}

Outcome ArchiveReader::failure(const QString &entryName) const
{
    const char *said = archive_error_string(m_archive);
    const QString cause = QStringLiteral("%1, entry %2: %3")
                              .arg(m_path, entryName, QString::fromUtf8(said ? said : "?"));
    if (cause.contains(QLatin1String("encrypt"), Qt::CaseInsensitive))
        return Outcome::failure(ArchiveReaderTexts::encrypted(m_path), cause);
    if (m_type == ArchiveType::Rar && isBeyondLibrary(cause))
        return Outcome::failure(ArchiveReaderTexts::unsupportedRar(m_path), cause);
    return damage(entryName, QString::fromUtf8(said ? said : "?"));
}

Outcome ArchiveReader::damage(const QString &entryName, const QString &cause) const
{
    return Outcome::failure(ArchiveReaderTexts::damaged(m_path, entryName),
                            QStringLiteral("%1, entry %2: %3").arg(m_path, entryName, cause));
}

Outcome ArchiveReader::next(ArchiveEntry &entry, bool &hasEntry)
{
    hasEntry = false;
    if (m_isEmptyZip)
        return Outcome::success();
    archive_entry *raw = nullptr;
    const int result = archive_read_next_header(m_archive, &raw);
    if (result == ARCHIVE_EOF)
        return endOfArchive();
    if (result != ARCHIVE_OK)
        return failure(m_current);
    ++m_found;
    m_sum = 0;
    hasEntry = true;
    return describe(raw, entry);
}

/// What no entry shows: entries that were not found, and damage after the last one.
Outcome ArchiveReader::endOfArchive()
{
    if (m_expected && *m_expected != m_found)
        return damage(QString(), QStringLiteral("the directory names %1 entries, %2 were found")
                                     .arg(*m_expected)
                                     .arg(m_found));
    if (m_type == ArchiveType::TarGzip && !m_gzip.readToEnd())
        return damage(QString(), m_gzip.errorText());
    return Outcome::success();
}

Outcome ArchiveReader::endOfEntry() const
{
    const auto recorded = m_rarSums.of(m_found);
    return !recorded || *recorded == m_sum ? Outcome::success()
                                           : damage(m_current, QStringLiteral("wrong CRC-32"));
}

Outcome ArchiveReader::describe(archive_entry *raw, ArchiveEntry &entry)
{
    if (archive_entry_is_encrypted(raw))
        return Outcome::failure(ArchiveReaderTexts::encrypted(m_path),
                                QStringLiteral("%1 is encrypted").arg(m_path));
    entry.kind = kindOf(raw);
    const auto name = entryName(raw, m_names);
    const auto target = entryLink(raw, m_names);
    if (!name || !target)
        return Outcome::failure(
            ArchiveReaderTexts::badName(m_path),
            QStringLiteral("%1: entry %2 has no readable name").arg(m_path).arg(m_found));
    entry.name = *name;
    entry.linkTarget = *target;
    m_current = *name;
    return Outcome::success();
}

Result<qint64> ArchiveReader::read(char *buffer, qint64 size)
{
    const la_ssize_t got = archive_read_data(m_archive, buffer, static_cast<std::size_t>(size));
    if (got < 0)
        return failure(m_current);
    if (got == 0) {
        if (Outcome whole = endOfEntry(); !whole)
            return whole;
    }
    if (m_type == ArchiveType::Rar)
        m_sum = crc32_gzip_refl(m_sum, reinterpret_cast<const unsigned char *>(buffer),
                                static_cast<quint64>(got));
    return qint64{got};
}

qint64 ArchiveReader::position() const
{
    return m_type == ArchiveType::TarGzip ? m_gzip.position() : archive_filter_bytes(m_archive, -1);
}

} // namespace KODMS::Services
