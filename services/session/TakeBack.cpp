// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/session/TakeBack.h"

#include "services/notices/NoticeHub.h"
#include "services/notices/OneLine.h"
#include "services/records/bll/StoredFileRecords.h"
#include "services/session/Runtime.h"

#include <exception>

namespace KODMS::Services {

namespace {

void stays(const QString &storedName, const QString &cause)
{
    qCInfo(lcFileStore).noquote() << "not taken back:" << storedName << oneLine(cause);
}

} // namespace

void takeBackUnrecorded(Runtime &runtime, const QString &storedName)
{
    try {
        if (StoredFileRecords(runtime.records().database()).isRecorded(storedName))
            return;
        const Outcome removed = runtime.fileStore().remove(storedName);
        if (!removed)
            stays(storedName, removed.cause);
    } catch (const std::exception &error) {
        stays(storedName, QString::fromUtf8(error.what()));
    }
}

} // namespace KODMS::Services
