// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/ArchiveType.h"

#include <QFile>
#include <QFileInfo>

#include <numeric>

namespace KODMS::Services {

namespace {

constexpr int TarBlock = 512;
constexpr int TarSumAt = 148;
constexpr int TarSumLength = 8;

/// A tar header sums up to what it says, with its sum field taken for blanks; two
/// blocks of zeros are an archive without entries.
bool isTarHeader(const QByteArray &head)
{
    if (head.size() < TarBlock)
        return false;
    const auto block = head.left(TarBlock);
    if (block.count('\0') == TarBlock)
        return head.size() >= 2 * TarBlock && head.left(2 * TarBlock).count('\0') == 2 * TarBlock;
    bool isNumber = false;
    const QByteArray field = block.mid(TarSumAt, TarSumLength);
    const int said = field.left(field.indexOf('\0')).trimmed().toInt(&isNumber, 8);
    const int sum =
        std::accumulate(block.cbegin(), block.cend(), TarSumLength * ' ', [](int total, char byte) {
            return total + static_cast<unsigned char>(byte);
        });
    const int inField = std::accumulate(field.cbegin(), field.cend(), 0, [](int total, char byte) {
        return total + static_cast<unsigned char>(byte);
    });
    return isNumber && said == sum - inField;
}

} // namespace

ArchiveType sniffArchiveType(const QString &path)
{
    QFile file(path);
    // A pipe would keep whoever opens it waiting.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return ArchiveType::Unknown;
    const QByteArray head = file.read(2 * TarBlock);
    for (const char *magic : {"PK\x03\x04", "PK\x05\x06"})
        if (head.startsWith(magic))
            return ArchiveType::Zip;
    if (head.startsWith("Rar!\x1a\x07"))
        return ArchiveType::Rar;
    if (head.startsWith("\x1f\x8b"))
        return ArchiveType::TarGzip;
    if (head.startsWith("7z\xbc\xaf\x27\x1c"))
        return ArchiveType::SevenZip;
    return isTarHeader(head) ? ArchiveType::Tar : ArchiveType::Unknown;
}

QString recordedArchiveType(const QString &path)
{
    const ArchiveType type = sniffArchiveType(path);
    if (type != ArchiveType::Unknown &&
        QFileInfo(path).suffix().compare(QLatin1String("kos"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("kos");
    switch (type) {
    case ArchiveType::Zip:
        return QStringLiteral("zip");
    case ArchiveType::Rar:
        return QStringLiteral("rar");
    case ArchiveType::TarGzip:
        return QStringLiteral("tgz");
    case ArchiveType::Tar:
        return QStringLiteral("tar");
    case ArchiveType::SevenZip:
        return QStringLiteral("7z");
    case ArchiveType::Unknown:
        break;
    }
    return QString();
}

} // namespace KODMS::Services
