// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/common/PlacedStore.h"

#include "services/session/Runtime.h"

#include <QCoreApplication>

namespace KODMS::Services {

Result<PlacedStore> PlacedStore::named(const std::string &database, const std::string &bucket)
{
    Runtime *runtime = Runtime::current();
    if (!runtime)
        return Outcome::failure(
            QCoreApplication::translate("KODMS::Services::PlacedStore", "服务尚未启动"),
            QStringLiteral("nothing is running"));
    FileStoreSettings settings = runtime->configuration().fileStore;
    PlacedStore place;
    place.m_running = &runtime->fileStore();
    if (settings.database.toStdString() == database && settings.bucket.toStdString() == bucket)
        return place;
    settings.database = QString::fromStdString(database);
    settings.bucket = QString::fromStdString(bucket);
    auto other = FileStore::create(settings);
    if (!other)
        return other.outcome;
    place.m_owned = std::move(other.value);
    return place;
}

} // namespace KODMS::Services
