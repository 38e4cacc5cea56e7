// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/ZipWriter.h"

#include <QDateTime>
#include <QtEndian>

#include <algorithm>
#include <isa-l/crc.h>
#include <limits>

namespace KODMS::Services {

namespace {

constexpr std::size_t BufferSize = std::size_t{1} << 19;
constexpr quint32 Deflated = 8;
constexpr quint32 Stored = 0;
constexpr quint32 Utf8Flag = 0x0800;
constexpr quint32 NeedsLong = 45;
constexpr quint32 NeedsDeflate = 20;
constexpr quint32 MadeByUnix = 3U << 8;
constexpr quint32 FileMode = 0100644;
constexpr quint32 FolderMode = 040755;
constexpr quint32 FolderAttribute = 0x10;
constexpr quint32 InLongField = std::numeric_limits<quint32>::max();
constexpr quint32 InLongCount = std::numeric_limits<quint16>::max();
/// What deflate cannot shrink grows a little; this is safely below 32 bits.
constexpr qint64 LargestShort = Q_INT64_C(0xf0000000);

template <typename Number> void put(QByteArray &bytes, Number number)
{
    const Number little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
}

void put16(QByteArray &bytes, quint32 number)
{
    put<quint16>(bytes, static_cast<quint16>(number));
}

void put32(QByteArray &bytes, qint64 number)
{
    put<quint32>(bytes, static_cast<quint32>(number));
}

/// The old form: local time in steps of two seconds, from 1980.
quint32 oldTime(qint64 seconds)
{
    const QDateTime time = QDateTime::fromSecsSinceEpoch(seconds);
    const QDate date = std::clamp(time.date(), QDate(1980, 1, 1), QDate(2107, 12, 31));
    const auto part = [](int value, int shift) { return static_cast<quint32>(value) << shift; };
    return part(date.year() - 1980, 25) | part(date.month(), 21) | part(date.day(), 16) |
           part(time.time().hour(), 11) | part(time.time().minute(), 5) |
           part(time.time().second() / 2, 0);
}

/// The exact time, which every unzip of today reads.
QByteArray timeField(qint64 seconds)
{
    QByteArray field("UT");
    put16(field, 5);
    field.append('\1');
    put32(field, seconds);
    return field;
}

} // namespace

/// From the version needed to the length of the name: the same in both headers.
void ZipWriter::putCommon(QByteArray &bytes, const Entry &entry)
{
    put16(bytes, entry.isLong ? NeedsLong : NeedsDeflate);
    put16(bytes, Utf8Flag);
    put16(bytes, entry.size > 0 ? Deflated : Stored);
    put32(bytes, oldTime(entry.modified));
    put32(bytes, entry.sum);
    put32(bytes, entry.isLong ? qint64{InLongField} : entry.packedSize);
    put32(bytes, entry.isLong ? qint64{InLongField} : entry.size);
    put16(bytes, static_cast<quint32>(entry.name.size()));
}

QByteArray ZipWriter::headerOf(const Entry &entry)
{
    QByteArray extra = timeField(entry.modified);
    if (entry.isLong) {
        put16(extra, 1);
        put16(extra, 16);
        put<qint64>(extra, entry.size);
        put<qint64>(extra, entry.packedSize);
    }
    QByteArray bytes("PK\x03\x04");
    putCommon(bytes, entry);
    put16(bytes, static_cast<quint32>(extra.size()));
    return bytes + entry.name + extra;
}

QByteArray ZipWriter::directoryEntryOf(const Entry &entry)
{
    const bool isFar = entry.offset >= qint64{InLongField};
    QByteArray extra = timeField(entry.modified);
    if (entry.isLong || isFar) {
        put16(extra, 1);
        put16(extra, (entry.isLong ? 16U : 0U) + (isFar ? 8U : 0U));
        if (entry.isLong) {
            put<qint64>(extra, entry.size);
            put<qint64>(extra, entry.packedSize);
        }
        if (isFar)
            put<qint64>(extra, entry.offset);
    }
    QByteArray bytes("PK\x01\x02");
    put16(bytes, MadeByUnix | NeedsLong);
    putCommon(bytes, entry);
    put16(bytes, static_cast<quint32>(extra.size()));
    put16(bytes, 0); // comment
    put16(bytes, 0); // disk
    put16(bytes, 0); // whether it is text
    put<quint32>(bytes, entry.isFolder ? (FolderMode << 16) | FolderAttribute : FileMode << 16);
    put32(bytes, isFar ? qint64{InLongField} : entry.offset);
    return bytes + entry.name + extra;
}

QByteArray ZipWriter::endOfDirectory(qint64 offset, qint64 size) const
{
    const bool isLong =
        m_count >= InLongCount || offset >= qint64{InLongField} || size >= qint64{InLongField};
    QByteArray bytes;
    if (isLong) {
        bytes += "PK\x06\x06";
        put<quint64>(bytes, 44);
        put16(bytes, MadeByUnix | NeedsLong);
        put16(bytes, NeedsLong);
        put<quint64>(bytes, 0); // disks
        put<quint64>(bytes, m_count);
        put<quint64>(bytes, m_count);
        put<qint64>(bytes, size);
        put<qint64>(bytes, offset);
        bytes += "PK\x06\x07";
        put32(bytes, 0);
        put<qint64>(bytes, offset + size);
        put32(bytes, 1);
    }
    const auto count = isLong ? InLongCount : static_cast<quint32>(m_count);
    bytes += "PK\x05\x06";
    put32(bytes, 0);
    put16(bytes, count);
    put16(bytes, count);
    put32(bytes, isLong ? qint64{InLongField} : size);
    put32(bytes, isLong ? qint64{InLongField} : offset);
    put16(bytes, 0);
    return bytes;
}

Outcome ZipWriter::append(const QByteArray &bytes)
{
    m_buffer.insert(m_buffer.end(), bytes.cbegin(), bytes.cend());
    return m_buffer.size() < BufferSize ? Outcome::success() : flush();
}

Outcome ZipWriter::flush()
{
    const auto size = static_cast<qint64>(m_buffer.size());
    Outcome written = m_file.write(m_buffer.data(), size);
    m_written += size;
    m_buffer.clear();
    return written;
}

Outcome ZipWriter::begin(Entry entry)
{
    entry.isLong = entry.size > LargestShort;
    entry.offset = position();
    m_entry = std::move(entry);
    Outcome begun = append(headerOf(m_entry));
    m_contentAt = position();
    return begun;
}

Outcome ZipWriter::addFolder(const QByteArray &name, qint64 modified)
{
    if (Outcome begun = begin({name, modified, 0, 0, 0, 0, true, false}); !begun)
        return begun;
    return endFile();
}

Outcome ZipWriter::beginFile(const QByteArray &name, qint64 modified, qint64 size)
{
    m_left = size;
    if (size > 0)
        m_deflater.begin();
    return begin({name, modified, 0, size, 0, 0, false, false});
}

Outcome ZipWriter::write(const char *data, qint64 size)
{
    m_entry.sum = crc32_gzip_refl(m_entry.sum, reinterpret_cast<const unsigned char *>(data),
                                  static_cast<quint64>(size));
    m_left -= size;
    m_deflater.add(data, size, m_left == 0, m_buffer);
    return m_buffer.size() < BufferSize ? Outcome::success() : flush();
}

/// Now that sum and packed size are known, they go into the header, which may be on
/// the disk already.
Outcome ZipWriter::endFile()
{
    m_entry.packedSize = position() - m_contentAt;
    const QByteArray header = headerOf(m_entry);
    ++m_count;
    m_directory += directoryEntryOf(m_entry);
    if (m_entry.offset < m_written)
        return m_file.writeAt(m_entry.offset, header.constData(), header.size());
    std::copy(header.cbegin(), header.cend(),
              m_buffer.begin() + static_cast<std::ptrdiff_t>(m_entry.offset - m_written));
    return Outcome::success();
}

Outcome ZipWriter::finish()
{
    const qint64 offset = position();
    const qint64 size = m_directory.size();
    if (Outcome put = append(m_directory + endOfDirectory(offset, size)); !put)
        return put;
    return flush();
}

} // namespace KODMS::Services
