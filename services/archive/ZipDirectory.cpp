// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/ZipDirectory.h"

#include <QFile>
#include <QtEndian>

namespace KODMS::Services {

namespace {

constexpr int EndLength = 22;
constexpr int MaxComment = 65535;
constexpr int LocatorLength = 20;
constexpr int LongEndLength = 56;
constexpr int EntryLength = 46;
constexpr qint64 MaxDirectory = qint64{256} << 20;
constexpr quint16 Utf8Flag = 0x0800;

template <typename Number> Number at(const QByteArray &bytes, int offset)
{
    return qFromLittleEndian<Number>(bytes.constData() + offset);
}

QByteArray readAt(QFile &file, qint64 offset, qint64 length)
{
    if (offset < 0 || length < 0 || offset + length > file.size() || !file.seek(offset))
        return QByteArray();
    const QByteArray bytes = file.read(length);
    return bytes.size() == length ? bytes : QByteArray();
}

struct DirectoryPlace {
    quint64 count = 0;
    qint64 offset = 0;
    qint64 length = 0;
};

/// The long form stands before the short one where numbers do not fit.
bool readLongEnd(QFile &file, qint64 endAt, DirectoryPlace &place)
{
    const QByteArray locator = readAt(file, endAt - LocatorLength, LocatorLength);
    if (!locator.startsWith("PK\x06\x07"))
        return true;
    const QByteArray end = readAt(file, at<qint64>(locator, 8), LongEndLength);
    if (!end.startsWith("PK\x06\x06"))
        return false;
    place.count = at<quint64>(end, 32);
    place.length = at<qint64>(end, 40);
    place.offset = at<qint64>(end, 48);
    return true;
}

std::optional<DirectoryPlace> findDirectory(QFile &file)
{
    const qint64 tailLength = qMin(file.size(), qint64{EndLength + MaxComment});
    const QByteArray tail = readAt(file, file.size() - tailLength, tailLength);
    const int at0 = tail.lastIndexOf("PK\x05\x06");
    if (at0 < 0 || tail.size() - at0 < EndLength)
        return std::nullopt;
    const QByteArray end = tail.mid(at0, EndLength);
    DirectoryPlace place{at<quint16>(end, 10), qint64{at<quint32>(end, 16)},
                         qint64{at<quint32>(end, 12)}};
    if (!readLongEnd(file, file.size() - tailLength + at0, place))
        return std::nullopt;
    return place;
}

} // namespace

std::optional<ZipDirectory> ZipDirectory::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const auto place = findDirectory(file);
    if (!place || place->length > MaxDirectory)
        return std::nullopt;
    const QByteArray entries = readAt(file, place->offset, place->length);
    ZipDirectory directory;
    directory.count = place->count;
    directory.isEmpty = place->count == 0 && place->offset == 0 && place->length == 0;
    for (int offset = 0; entries.size() - offset >= EntryLength;) {
        if (entries.mid(offset, 4) != QByteArray("PK\x01\x02"))
            break;
        const int nameLength = at<quint16>(entries, offset + 28);
        const int extraLength = at<quint16>(entries, offset + 30);
        const int commentLength = at<quint16>(entries, offset + 32);
        if ((at<quint16>(entries, offset + 8) & Utf8Flag) == 0)
            directory.unmarkedNames.insert(entries.mid(offset + EntryLength, nameLength));
        offset += EntryLength + nameLength + extraLength + commentLength;
    }
    return directory;
}

} // namespace KODMS::Services
