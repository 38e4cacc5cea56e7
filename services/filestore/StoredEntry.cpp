// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/StoredEntry.h"

#include "services/disk/Disk.h"
#include "services/disk/FsPath.h"
#include "services/filestore/StoreFailures.h"

#include <QCoreApplication>

#include <optional>

namespace KODMS::Services {

namespace {

constexpr int DigestLength = 64;

struct StoredEntryTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::StoredEntry)

public:
    static Outcome damaged(const QString &name, const QString &folder)
    {
        return Outcome::failure(tr("文件库中的文件已损坏：%1").arg(name),
                                QStringLiteral("not one body with its sums: %1").arg(folder));
    }
};

std::optional<StoredEntry> parsed(const QString &name, const QString &bodyName)
{
    const QStringList parts = bodyName.split(QLatin1Char('-'));
    if (parts.size() != 3 || parts.at(0).size() != DigestLength)
        return std::nullopt;
    StoredEntry entry;
    entry.info = {name, parts.at(1).toLongLong(), parts.at(0).toLatin1()};
    entry.owner = parts.at(2);
    if (QByteArray::fromHex(entry.info.sha256).toHex() != entry.info.sha256 ||
        StoredEntry::bodyName(entry.info.sha256, entry.info.size, entry.owner) != bodyName)
        return std::nullopt;
    return entry;
}

} // namespace

QString StoredEntry::bodyName(const QByteArray &sha256, qint64 size, const QString &owner)
{
    return QStringLiteral("%1-%2-%3").arg(QString::fromLatin1(sha256)).arg(size).arg(owner);
}

Result<StoredEntry> StoredEntry::read(const QString &name, const QString &folder)
{
    std::error_code error;
    const std::vector<Disk::Path> bodies = Disk::children(fsPath(folder), error);
    if (error == std::errc::no_such_file_or_directory || (!error && bodies.empty()))
        return missingFailure(name);
    if (error || bodies.size() != 1)
        return StoredEntryTexts::damaged(name, folder);
    auto entry = parsed(name, fromFsPath(bodies.front().filename()));
    if (!entry)
        return StoredEntryTexts::damaged(name, folder);
    entry->bodyPath = fromFsPath(bodies.front());
    return *entry;
}

} // namespace KODMS::Services
