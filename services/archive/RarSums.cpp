// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/RarSums.h"

#include <QFile>
#include <QtEndian>

namespace KODMS::Services {

namespace {

struct Block {
    bool isFile = false;
    bool isEnd = false;
    qint64 dataSize = 0;
    std::optional<quint32> sum;
};

using BlockReader = std::optional<Block> (*)(QFile &file);

template <typename Number> Number at(const QByteArray &bytes, int offset)
{
    return offset + static_cast<int>(sizeof(Number)) <= bytes.size()
               ? qFromLittleEndian<Number>(bytes.constData() + offset)
               : Number{};
}

// Version 4: fixed fields.

const QByteArray Signature4 = QByteArray("Rar!\x1a\x07\0", 7);
constexpr int Head4 = 7;
constexpr unsigned char FileBlock4 = 0x74;
constexpr unsigned char EndBlock4 = 0x7b;
constexpr unsigned HasData4 = 0x8000;
constexpr unsigned HasHighSize4 = 0x0100;
constexpr unsigned IsSplit4 = 0x0003;
constexpr unsigned FolderBits4 = 0x00e0;

std::optional<Block> nextBlock4(QFile &file)
{
    const int size = at<quint16>(file.peek(Head4), 5);
    const QByteArray header = file.read(size);
    if (size < Head4 || header.size() != size)
        return std::nullopt;
    const auto type = static_cast<unsigned char>(header.at(2));
    const unsigned flags = at<quint16>(header, 3);
    Block block;
    block.isFile = type == FileBlock4;
    block.isEnd = type == EndBlock4;
    if (block.isFile || (flags & HasData4) != 0)
        block.dataSize = at<quint32>(header, 7);
    if (block.isFile && (flags & HasHighSize4) != 0)
        block.dataSize += qint64{at<quint32>(header, 32) & 0x7fffffffU} << 32;
    if (block.isFile && (flags & IsSplit4) == 0 && (flags & FolderBits4) != FolderBits4)
        block.sum = at<quint32>(header, 16);
    return block;
}

// Version 5: numbers of any length.

const QByteArray Signature5 = QByteArray("Rar!\x1a\x07\x01\0", 8);
constexpr int MaxHeader5 = 2 << 20;
constexpr quint64 FileBlock5 = 2;
constexpr quint64 EndBlock5 = 5;
constexpr quint64 HasExtra5 = 0x01;
constexpr quint64 HasData5 = 0x02;
constexpr quint64 IsSplit5 = 0x18;
constexpr quint64 IsFolder5 = 0x01;
constexpr quint64 HasTime5 = 0x02;
constexpr quint64 HasSum5 = 0x04;
constexpr int SumLength = 4;
constexpr int TimeLength = 4;

/// Reads the format's numbers: seven bits a byte, the low ones first.
class Cursor {
public:
    explicit Cursor(const QByteArray &bytes) : m_bytes(bytes) {}

    quint64 number()
    {
        quint64 value = 0;
        for (int shift = 0; shift < 63; shift += 7) {
            const auto byte = at<quint8>(m_bytes, m_at++);
            value |= quint64{byte & 0x7fU} << shift;
            if ((byte & 0x80U) == 0)
                break;
        }
        return value;
    }

    void skip(int count) { m_at += count; }

    int position() const { return m_at; }

private:
    const QByteArray &m_bytes;
    int m_at = 0;
};

Block parsed5(const QByteArray &header)
{
    Cursor cursor(header);
    Block block;
    const quint64 type = cursor.number();
    block.isFile = type == FileBlock5;
    block.isEnd = type == EndBlock5;
    const quint64 flags = cursor.number();
    if ((flags & HasExtra5) != 0)
        cursor.number();
    if ((flags & HasData5) != 0)
        block.dataSize = static_cast<qint64>(cursor.number());
    if (!block.isFile)
        return block;
    const quint64 fileFlags = cursor.number();
    cursor.number();
    cursor.number();
    if ((fileFlags & HasTime5) != 0)
        cursor.skip(TimeLength);
    if ((fileFlags & HasSum5) != 0 && (fileFlags & IsFolder5) == 0 && (flags & IsSplit5) == 0)
        block.sum = at<quint32>(header, cursor.position());
    return block;
}

std::optional<Block> nextBlock5(QFile &file)
{
    file.read(SumLength);
    const QByteArray sizeBytes = file.peek(3);
    Cursor cursor(sizeBytes);
    const auto size = static_cast<qint64>(cursor.number());
    if (size == 0 || size > MaxHeader5)
        return std::nullopt;
    file.read(cursor.position());
    const QByteArray header = file.read(size);
    if (header.size() != size)
        return std::nullopt;
    return parsed5(header);
}

/// Files may have blocks of comments, rights and streams beside their own.
qint64 mostBlocks(qint64 maxEntries)
{
    return qMin(maxEntries, qint64{1} << 40) * 4 + 1000;
}

} // namespace

RarSums RarSums::read(const QString &path, qint64 maxEntries)
{
    RarSums sums;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return sums;
    const bool is5 = file.peek(Signature5.size()) == Signature5;
    if (!is5 && file.peek(Signature4.size()) != Signature4)
        return sums;
    file.seek(is5 ? Signature5.size() : Signature4.size());
    const BlockReader next = is5 ? nextBlock5 : nextBlock4;
    qint64 blocksLeft = mostBlocks(maxEntries);
    for (auto block = next(file); block && !block->isEnd; block = next(file)) {
        sums.m_isTooLong = blocksLeft-- == 0;
        if (sums.m_isTooLong)
            break;
        if (block->isFile)
            sums.m_sums.append(block->sum);
        if (block->dataSize < 0 || block->dataSize > file.size() - file.pos() ||
            !file.seek(file.pos() + block->dataSize))
            break;
    }
    return sums;
}

std::optional<quint32> RarSums::of(quint64 entry) const
{
    if (entry == 0 || entry > static_cast<quint64>(m_sums.size()))
        return std::nullopt;
    return m_sums.at(static_cast<int>(entry) - 1);
}

} // namespace KODMS::Services
