// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/archive/RawRar.h"

#include "tests/archive/RawZip.h"

#include <QtEndian>

namespace KODMS::Tests {

namespace {

template <typename Number> QByteArray little(Number number)
{
    const Number value = qToLittleEndian(number);
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof value);
}

QByteArray little16(quint32 number)
{
    return little(static_cast<quint16>(number));
}

QByteArray sealed4(const QByteArray &header)
{
    return little16(crc32Of(header) & 0xffffU) + header;
}

QByteArray number5(quint64 number)
{
    QByteArray bytes;
    for (; number > 0x7f; number >>= 7)
        bytes += static_cast<char>((number & 0x7fU) | 0x80U);
    return bytes + static_cast<char>(number);
}

QByteArray sealed5(const QByteArray &header)
{
    const QByteArray sized = number5(static_cast<quint64>(header.size())) + header;
    return little(crc32Of(sized)) + sized;
}

} // namespace

QByteArray rawRar4(const RarFiles &files, quint32 archiveFlags, quint32 fileFlags)
{
    QByteArray rar("Rar!\x1a\x07\0", 7);
    rar += sealed4(QByteArray("\x73", 1) + little16(archiveFlags) + little16(13) +
                   QByteArray(6, '\0'));
    for (const auto &file : files) {
        const auto size = static_cast<quint32>(file.second.size());
        const auto nameSize = static_cast<quint32>(file.first.size());
        rar += sealed4(QByteArray("\x74", 1) + little16(0x8000U | fileFlags) +
                       little16(32 + nameSize) + little(size) + little(size) +
                       QByteArray("\x03", 1) + little(crc32Of(file.second)) +
                       little(quint32{0x58210000}) + QByteArray("\x14\x30", 2) +
                       little16(nameSize) + little(quint32{0100644}) + file.first);
        rar += file.second;
    }
    return rar + QByteArray("\xc4\x3d\x7b\x00\x40\x07\x00", 7);
}

QByteArray rawRar5(const RarFiles &files)
{
    QByteArray rar("Rar!\x1a\x07\x01\0", 8);
    rar += sealed5(QByteArray("\x01\0\0", 3));
    for (const auto &file : files) {
        const auto size = static_cast<quint64>(file.second.size());
        rar += sealed5(QByteArray("\x02\x02", 2) + number5(size) + QByteArray("\x04", 1) +
                       number5(size) + number5(0100644) + little(crc32Of(file.second)) +
                       QByteArray("\0\x01", 2) + number5(static_cast<quint64>(file.first.size())) +
                       file.first);
        rar += file.second;
    }
    return rar + sealed5(QByteArray("\x05\0\0", 3));
}

QByteArray encryptedRar5()
{
    return QByteArray("Rar!\x1a\x07\x01\0", 8) +
           sealed5(QByteArray("\x04\0\0\0\x0f", 5) + QByteArray(16, 's')) + QByteArray(200, 'e');
}

} // namespace KODMS::Tests
