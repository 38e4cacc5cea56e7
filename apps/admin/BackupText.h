// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/Report.h"
#include "services/api/Backup.h"

namespace KODMS::Admin {

/// The report on a backup that was written or read: `done` says which.
Report backupReport(const QString &done, const QString &file,
                    const Services::BackupSummary &summary);

/// Why there is none; names the file, whatever the reason does. Or that Ctrl-C was pressed.
Report backupFailure(const QString &file, const QString &reason);

} // namespace KODMS::Admin
