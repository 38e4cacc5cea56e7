// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/archive/RawTar.h"

#include <cstdio>
#include <numeric>

namespace KODMS::Tests {

namespace {

constexpr int BlockSize = 512;

void putText(QByteArray &block, int offset, const QByteArray &text)
{
    block.replace(offset, text.size(), text);
}

QByteArray octal(qint64 number, int digits)
{
    return QByteArray::number(number, 8).rightJustified(digits, '0');
}

QByteArray headerOf(const RawTarEntry &entry)
{
    QByteArray block(BlockSize, '\0');
    putText(block, 0, entry.name.left(100));
    putText(block, 100, "0000644");
    putText(block, 108, "0000000");
    putText(block, 116, "0000000");
    putText(block, 124,
            entry.sizeField.isEmpty() ? octal(entry.content.size(), 11) : entry.sizeField);
    putText(block, 136, octal(1700000000, 11));
    putText(block, 148, QByteArray(8, ' '));
    block[156] = entry.type;
    putText(block, 157, entry.link.left(100));
    putText(block, 257,
            QByteArray("ustar\0"
                       "00",
                       8));
    const int sum = std::accumulate(block.cbegin(), block.cend(), 0, [](int total, char byte) {
        return total + static_cast<unsigned char>(byte);
    });
    putText(block, 148, octal(sum, 6) + '\0' + ' ');
    return block;
}

QByteArray padded(QByteArray bytes)
{
    const int rest = bytes.size() % BlockSize;
    return rest == 0 ? bytes : bytes + QByteArray(BlockSize - rest, '\0');
}

} // namespace

QByteArray rawTar(const QVector<RawTarEntry> &entries)
{
    QByteArray tar;
    // Appended piece by piece: a sum of pieces would make room for just itself each time.
    for (const RawTarEntry &entry : entries) {
        if (entry.name.size() > 100) { // the long-name form that most programs write
            tar.append(headerOf({"././@LongLink", entry.name + '\0', 'L', {}, {}}));
            tar.append(padded(entry.name + '\0'));
        }
        tar.append(headerOf(entry));
        tar.append(padded(entry.content));
    }
    return tar + QByteArray(2 * BlockSize, '\0');
}

} // namespace KODMS::Tests
