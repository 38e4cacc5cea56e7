// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/session/TakeBack.h"

#include "services/notices/NoticeHub.h"
#include "services/notices/OneLine.h"
#include "services/records/Dialect.h"
#include "services/records/Transaction.h"
#include "services/records/bll/StoredFileRecords.h"
#include "services/session/Runtime.h"

#include <exception>

namespace KODMS::Services {

namespace {

void stays(const QString &storedName, const QString &cause)
{
    qCInfo(lcFileStore).noquote() << "not taken back:" << storedName << oneLine(cause);
}

/// A server may still be about to save what was asked of it over a connection that is lost by
/// now: whoever writes waits for it. The embedded engine has no such delay, and a look that
/// waits for nobody will do.
Transaction::Purpose lookFor(Database &database)
{
    return database.dialect().isServer() ? Transaction::Purpose::Write : Transaction::Purpose::Read;
}

bool isRecorded(Database &database, const QString &storedName)
{
    const Transaction look(database, lookFor(database));
    return StoredFileRecords(database).isRecorded(storedName);
}

} // namespace

void takeBackUnrecorded(Runtime &runtime, const QString &storedName)
{
    try {
        if (isRecorded(runtime.records().database(), storedName))
            return;
        const Outcome removed = runtime.fileStore().remove(storedName);
        if (!removed)
            stays(storedName, removed.cause);
    } catch (const std::exception &error) {
        stays(storedName, QString::fromUtf8(error.what()));
    }
}

} // namespace KODMS::Services
