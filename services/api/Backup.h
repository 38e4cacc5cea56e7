// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "services/notices/Outcome.h"

#include <QString>

namespace KODMS::Services {

class Progress;

struct BackupSummary {
    QString time; ///< the moment that the backup holds, UTC, ISO 8601
    int schemaVersion = 0;
    qint64 flows = 0;
    qint64 files = 0;
    qint64 bytes = 0;      ///< of the stored files
    QString recordsSha256; ///< of the database's copy
};

/// Records and files of one moment in one file, taken while desks work. The file
/// is a plain tar archive: a list with all sums, the database, the stored files.
class KODMS_SERVICES_API Backup {
public:
    /// Backs up the running installation. `file` must not exist; it appears when it
    /// is whole and has been read back.
    static Result<BackupSummary> backup(const QString &file, Progress *progress = nullptr);

    /// Fills the installation that `iniPath` describes (empty: the default one),
    /// which must not be running and must have neither database nor stored files.
    /// Everything is compared with its sums before the database appears; on failure
    /// the installation is as empty as before. Nothing runs afterwards.
    static Result<BackupSummary> restore(const QString &iniPath, const QString &file,
                                         Progress *progress = nullptr);

    /// Reads a backup to its end and compares every sum, without an installation.
    static Result<BackupSummary> verify(const QString &file, Progress *progress = nullptr);
};

} // namespace KODMS::Services
