// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/BackupText.h"

#include "apps/console/Interrupt.h"

#include <QLocale>

namespace KODMS::Admin {

using Console::Interrupt;

Report backupReport(const QString &done, const QString &file,
                    const Services::BackupSummary &summary)
{
    return Report::success({QStringLiteral("%1 %2: %3 flows, %4 files (%5), as of %6")
                                .arg(done, file)
                                .arg(summary.flows)
                                .arg(summary.files)
                                .arg(QLocale::c().formattedDataSize(summary.bytes), summary.time)},
                           {{QStringLiteral("file"), file},
                            {QStringLiteral("time"), summary.time},
                            {QStringLiteral("schemaVersion"), summary.schemaVersion},
                            {QStringLiteral("flows"), summary.flows},
                            {QStringLiteral("files"), summary.files},
                            {QStringLiteral("bytes"), summary.bytes},
                            {QStringLiteral("recordsSha256"), summary.recordsSha256}});
}

Report backupFailure(const QString &file, const QString &reason)
{
    if (Interrupt::wasAskedFor())
        return Report::cancelled();
    return Report::failure(reason.contains(file) ? reason : file + QStringLiteral(": ") + reason);
}

} // namespace KODMS::Admin
