// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/FileStore.h"

#include "services/filestore/FolderStore.h"
#include "services/filestore/gridfs/GridFsStore.h"

#include <QCoreApplication>

#include <algorithm>

namespace KODMS::Services {

namespace {

constexpr int MaxNameLength = 200;

bool isNameCharacter(QChar c)
{
    const ushort u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') || u == '.' ||
           u == '_' || u == '-';
}

} // namespace

Result<std::unique_ptr<FileStore>> FileStore::create(const FileStoreSettings &settings)
{
    if (settings.kind == QLatin1String("folder"))
        return FolderStore::open(settings.root, settings.database, settings.bucket);
    if (settings.kind == QLatin1String("gridfs"))
        return GridFsStore::open(settings);
    return Outcome::failure(
        QCoreApplication::translate("KODMS::Services::FileStore", "本程序没有此种文件库：%1")
            .arg(settings.kind),
        QStringLiteral("no file store of kind %1 in this build").arg(settings.kind));
}

bool FileStore::isValidStoredName(const QString &name)
{
    return !name.isEmpty() && name.size() <= MaxNameLength && name.at(0) != QLatin1Char('.') &&
           std::all_of(name.cbegin(), name.cend(), isNameCharacter);
}

Outcome FileStore::removeIfThere(const QString &name)
{
    Outcome removed = remove(name);
    if (removed)
        return removed;
    const auto isThere = has(name);
    if (!isThere)
        return isThere.outcome;
    return isThere.value ? removed : Outcome::success();
}

} // namespace KODMS::Services
