// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/TarWriter.h"

#include "services/disk/IoFailure.h"

#include <archive.h>
#include <archive_entry.h>
#include <cerrno>

namespace KODMS::Services {

namespace {

constexpr int FileMode = 0644;

} // namespace

TarWriter::TarWriter(FileHandle &file) : m_file(file), m_archive(archive_write_new()) {}

TarWriter::~TarWriter()
{
    archive_write_free(m_archive);
}

Result<std::unique_ptr<TarWriter>> TarWriter::create(FileHandle &file)
{
    std::unique_ptr<TarWriter> writer(new TarWriter(file));
    const auto sink = [](archive *, void *self, const void *bytes, std::size_t size) {
        auto *tar = static_cast<TarWriter *>(self);
        Outcome written =
            tar->m_file.write(static_cast<const char *>(bytes), static_cast<qint64>(size));
        if (written)
            return static_cast<la_ssize_t>(size);
        tar->m_fileFailure = written;
        return la_ssize_t{-1};
    };
    archive_write_set_format_pax_restricted(writer->m_archive);
    const Outcome opened = writer->checked(
        archive_write_open(writer->m_archive, writer.get(), nullptr, sink, nullptr));
    if (!opened)
        return opened;
    return writer;
}

/// What the disk said is clearer than what the library makes of it.
Outcome TarWriter::checked(int result)
{
    if (result == ARCHIVE_OK)
        return Outcome::success();
    if (!m_fileFailure)
        return m_fileFailure;
    const char *said = archive_error_string(m_archive);
    return Outcome::failure(ioFailure("write", m_file.path(), EIO).text,
                            QString::fromUtf8(said ? said : "tar"));
}

Outcome TarWriter::begin(const QString &name, qint64 size)
{
    const std::unique_ptr<archive_entry, void (*)(archive_entry *)> entry(archive_entry_new(),
                                                                          archive_entry_free);
    archive_entry_set_pathname_utf8(entry.get(), name.toUtf8().constData());
    archive_entry_set_filetype(entry.get(), AE_IFREG);
    archive_entry_set_perm(entry.get(), FileMode);
    archive_entry_set_size(entry.get(), size);
    return checked(archive_write_header(m_archive, entry.get()));
}

Outcome TarWriter::write(const char *data, qint64 size)
{
    const la_ssize_t written = archive_write_data(m_archive, data, static_cast<std::size_t>(size));
    return checked(written == size ? ARCHIVE_OK : ARCHIVE_FATAL);
}

Outcome TarWriter::finish()
{
    return checked(archive_write_close(m_archive));
}

} // namespace KODMS::Services
