// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/archive/Deflater.h"
#include "services/disk/FileHandle.h"

#include <QByteArray>

#include <vector>

namespace KODMS::Services {

/// Writes a zip archive with deflated entries that any unzip can read, of any size
/// (zip64 where it takes that). Sizes and sums stand before each entry as well as in
/// the directory. For one thread.
class ZipWriter {
public:
    /// `file` is new and outlives the writer.
    explicit ZipWriter(FileHandle &file) : m_file(file) {}

    /// Names are UTF-8; a folder's ends with "/". Times are seconds since 1970.
    Outcome addFolder(const QByteArray &name, qint64 modified);
    /// What follows are `size` bytes of a file.
    Outcome beginFile(const QByteArray &name, qint64 modified, qint64 size);
    Outcome write(const char *data, qint64 size);
    Outcome endFile();
    /// Without it the archive is not whole.
    Outcome finish();

private:
    struct Entry {
        QByteArray name;
        qint64 modified = 0;
        qint64 offset = 0;
        qint64 size = 0;
        qint64 packedSize = 0;
        quint32 sum = 0;
        bool isFolder = false;
        bool isLong = false; ///< has room for sizes of 64 bits
    };

    static QByteArray headerOf(const Entry &entry);
    static QByteArray directoryEntryOf(const Entry &entry);
    static void putCommon(QByteArray &bytes, const Entry &entry);
    Outcome begin(Entry entry);
    Outcome append(const QByteArray &bytes);
    Outcome flush();

    qint64 position() const { return m_written + static_cast<qint64>(m_buffer.size()); }

    QByteArray endOfDirectory(qint64 offset, qint64 size) const;

    FileHandle &m_file;
    Deflater m_deflater;
    Entry m_entry;
    qint64 m_contentAt = 0;
    qint64 m_left = 0; ///< of the file that is to be written
    QByteArray m_directory;
    quint64 m_count = 0;
    std::vector<char> m_buffer; ///< of the archive, not written yet
    qint64 m_written = 0;
};

} // namespace KODMS::Services
