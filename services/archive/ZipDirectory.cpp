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
constexpr qint64 WindowLength = qint64{1} << 18;
constexpr quint16 Utf8Flag = 0x0800;

template <typename Number> Number at(const QByteArray &bytes, int offset)
{
    return qFromLittleEndian<Number>(bytes.constData() + offset);
}

QByteArray readAt(QFile &file, qint64 offset, qint64 length)
{
    if (offset < 0 || length < 0 || offset > file.size() - length || !file.seek(offset))
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

/// Goes through the directory's entries, of which a part is in memory.
class DirectoryWindow {
public:
    DirectoryWindow(QFile &file, const DirectoryPlace &place)
        : m_file(file), m_next(place.offset), m_end(place.offset + place.length)
    {
    }

    /// False at the end of what looks like entries.
    bool next()
    {
        if (!holds(EntryLength) || m_bytes.mid(m_at, 4) != QByteArray("PK\x01\x02"))
            return false;
        const int nameLength = at<quint16>(m_bytes, m_at + 28);
        const int extraLength = at<quint16>(m_bytes, m_at + 30);
        const int commentLength = at<quint16>(m_bytes, m_at + 32);
        if (!holds(EntryLength + nameLength))
            return false;
        m_isMarked = (at<quint16>(m_bytes, m_at + 8) & Utf8Flag) != 0;
        m_name = m_bytes.mid(m_at + EntryLength, nameLength);
        m_at += EntryLength + nameLength + extraLength + commentLength;
        return true;
    }

    bool isMarkedUtf8() const { return m_isMarked; }

    const QByteArray &name() const { return m_name; }

private:
    /// Whether so many bytes are there from the present one on.
    bool holds(int length)
    {
        if (m_bytes.size() - m_at >= length)
            return true;
        m_next += m_at;
        m_at = 0;
        m_bytes = readAt(m_file, m_next, qMin(WindowLength, m_end - m_next));
        return m_bytes.size() >= length;
    }

    QFile &m_file;
    qint64 m_next; ///< where the bytes in memory begin
    qint64 m_end;
    QByteArray m_bytes;
    int m_at = 0;
    bool m_isMarked = false;
    QByteArray m_name;
};

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
    const bool isInFile = place.offset >= 0 && place.length >= 0 && place.length <= file.size() &&
                          place.offset <= file.size() - place.length;
    return isInFile ? std::optional(place) : std::nullopt;
}

} // namespace

std::optional<ZipDirectory> ZipDirectory::read(const QString &path, qint64 maxEntries)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const auto place = findDirectory(file);
    if (!place)
        return std::nullopt;
    ZipDirectory directory;
    directory.count = place->count;
    directory.isEmpty = place->count == 0 && place->offset == 0 && place->length == 0;
    directory.isTooLong = directory.count > static_cast<quint64>(maxEntries);
    DirectoryWindow window(file, *place);
    for (qint64 found = 1; !directory.isTooLong && window.next(); ++found) {
        directory.isTooLong = found > maxEntries;
        if (!window.isMarkedUtf8())
            directory.unmarkedNames.insert(window.name());
    }
    return directory;
}

} // namespace KODMS::Services
