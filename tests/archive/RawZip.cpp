// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/archive/RawZip.h"

#include <QtEndian>

#include <array>

namespace KODMS::Tests {

namespace {

constexpr quint16 Utf8Flag = 0x0800;
constexpr quint16 EncryptedFlag = 0x0001;
constexpr quint16 MadeByUnix = 3 << 8;

template <typename Number> void put(QByteArray &bytes, Number number)
{
    const Number little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
}

void put16(QByteArray &bytes, quint32 number)
{
    put<quint16>(bytes, static_cast<quint16>(number));
}

const QByteArray &dataOf(const RawZipEntry &entry)
{
    return entry.packed.isEmpty() ? entry.content : entry.packed;
}

/// Version to flags to sizes: the same in both headers.
void putCommon(QByteArray &bytes, const RawZipEntry &entry, const QByteArray &name)
{
    const auto flags =
        (entry.isMarkedUtf8 ? Utf8Flag : 0) | (entry.isEncrypted ? EncryptedFlag : 0);
    const int size = entry.declaredSize >= 0 ? entry.declaredSize : entry.content.size();
    put16(bytes, 20);
    put16(bytes, static_cast<quint32>(flags));
    put16(bytes, static_cast<quint32>(entry.method));
    put<quint32>(bytes, 0x58210000U);
    put<quint32>(bytes, crc32Of(entry.content) ^ (entry.hasWrongCrc ? 1U : 0U));
    put<quint32>(bytes, static_cast<quint32>(dataOf(entry).size()));
    put<quint32>(bytes, static_cast<quint32>(size));
    put16(bytes, static_cast<quint32>(name.size()));
    put16(bytes, 0);
}

QByteArray directoryEntry(const RawZipEntry &entry, const QByteArray &name, int offset)
{
    QByteArray bytes("PK\x01\x02");
    put16(bytes, MadeByUnix | 20);
    putCommon(bytes, entry, name);
    put16(bytes, 0);
    put16(bytes, 0);
    put16(bytes, 0);
    put<quint32>(bytes, entry.unixMode << 16);
    put<quint32>(bytes, static_cast<quint32>(entry.offset < 0 ? offset : entry.offset));
    return bytes + name;
}

QByteArray longEnd(qint64 count, int offset, int length, int at)
{
    QByteArray bytes("PK\x06\x06");
    put<quint64>(bytes, 44);
    put16(bytes, 45);
    put16(bytes, 45);
    put<quint64>(bytes, 0);
    put<quint64>(bytes, static_cast<quint64>(count));
    put<quint64>(bytes, static_cast<quint64>(count));
    put<quint64>(bytes, static_cast<quint64>(length));
    put<quint64>(bytes, static_cast<quint64>(offset));
    bytes += "PK\x06\x07";
    put<quint32>(bytes, 0);
    put<quint64>(bytes, static_cast<quint64>(at));
    put<quint32>(bytes, 1);
    return bytes;
}

} // namespace

quint32 crc32Of(const QByteArray &bytes)
{
    static const auto table = [] {
        std::array<quint32, 256> made{};
        for (quint32 i = 0; i < made.size(); ++i) {
            made[i] = i;
            for (int bit = 0; bit < 8; ++bit)
                made[i] = (made[i] >> 1) ^ ((made[i] & 1U) != 0 ? 0xedb88320U : 0U);
        }
        return made;
    }();
    quint32 crc = 0xffffffffU;
    for (const char byte : bytes)
        crc = (crc >> 8) ^ table[(crc ^ static_cast<unsigned char>(byte)) & 0xffU];
    return ~crc;
}

QByteArray rawZip(const QVector<RawZipEntry> &entries, const RawZipOptions &options)
{
    QByteArray zip;
    QByteArray directory;
    int count = 0;
    for (const RawZipEntry &entry : entries) {
        for (int i = 0; i < options.repeatDirectory; ++i, ++count)
            directory += directoryEntry(
                entry, options.renameRepeats ? entry.name + QByteArray::number(i) : entry.name,
                zip.size());
        const QByteArray name = entry.localName.isEmpty() ? entry.name : entry.localName;
        zip += "PK\x03\x04";
        putCommon(zip, entry, name);
        zip += name + dataOf(entry);
    }
    if (options.cutDirectory)
        directory.chop(directory.size() / 2);
    const int offset = zip.size();
    zip += directory;
    if (options.useLongEnd)
        zip += longEnd(options.declaredCount < 0 ? count : options.declaredCount, offset,
                       directory.size(), zip.size());
    zip += "PK\x05\x06";
    put<quint32>(zip, 0);
    put16(zip, options.useLongEnd ? 0xffffU : static_cast<quint32>(count));
    put16(zip, options.useLongEnd ? 0xffffU : static_cast<quint32>(count));
    put<quint32>(zip, static_cast<quint32>(directory.size()));
    put<quint32>(zip, options.useLongEnd ? 0xffffffffU : static_cast<quint32>(offset));
    put16(zip, 0);
    return zip;
}

} // namespace KODMS::Tests
