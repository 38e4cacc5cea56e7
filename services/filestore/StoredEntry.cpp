// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/StoredEntry.h"

#include "services/disk/FsPath.h"

#include <QCoreApplication>

#include <optional>

namespace KODMS::Services {

namespace {

constexpr int DigestLength = 64;

struct StoredEntryTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::StoredEntry)

public:
    static Outcome missing(const QString &name)
    {
        return Outcome::failure(tr("文件库中没有文件：%1").arg(name),
                                QStringLiteral("not stored: %1").arg(name));
    }

    static Outcome damaged(const QString &name, const QString &folder)
    {
        return Outcome::failure(tr("文件库中的文件已损坏：%1").arg(name),
                                QStringLiteral("not one body with its sums: %1").arg(folder));
    }
};

std::optional<StoredFileInfo> parsed(const QString &name, const std::string &bodyName)
{
    const QByteArray text = QByteArray::fromStdString(bodyName);
    if (text.size() < DigestLength + 2 || text.at(DigestLength) != '-')
        return std::nullopt;
    const QByteArray digest = text.left(DigestLength);
    if (QByteArray::fromHex(digest).toHex() != digest)
        return std::nullopt;
    bool isNumber = false;
    const qint64 size = text.mid(DigestLength + 1).toLongLong(&isNumber);
    if (!isNumber || StoredEntry::bodyName(digest, size) != QString::fromLatin1(text))
        return std::nullopt;
    return StoredFileInfo{name, size, digest};
}

} // namespace

QString StoredEntry::bodyName(const QByteArray &sha256, qint64 size)
{
    return QString::fromLatin1(sha256) + QLatin1Char('-') + QString::number(size);
}

Result<StoredEntry> StoredEntry::read(const QString &name, const QString &folder)
{
    std::error_code error;
    std::filesystem::directory_iterator it(fsPath(folder), error);
    const std::filesystem::directory_iterator end;
    if (error == std::errc::no_such_file_or_directory || (!error && it == end))
        return StoredEntryTexts::missing(name);
    if (error)
        return StoredEntryTexts::damaged(name, folder);
    const std::filesystem::path body = it->path();
    const auto info = parsed(name, body.filename().string());
    it.increment(error);
    if (!info || error || it != end)
        return StoredEntryTexts::damaged(name, folder);
    return StoredEntry{*info, fromFsPath(body)};
}

} // namespace KODMS::Services
