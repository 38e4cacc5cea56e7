// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"
#include "services/records/bll/StoredFileRecords.h"

#include <optional>

namespace KODMS::Services {

/// What an import brings, and from where the flow goes on.
enum class ImportKind {
    PreparedJob, ///< out of pre-processing: the flow goes to (1,0)
    RobotResult  ///< the robot's, looked over by the executor: the flow stays at (2,2)
};

/// A stored ODB++ job, as it goes into the records.
struct ImportedJob {
    QString flowGuid;
    ImportKind kind = ImportKind::PreparedJob;
    int userId = 0;     ///< who began the import
    StoredFileRow file; ///< without customer and kind, which the flow and the import tell
    QByteArray sha256;  ///< of the stored file, in hexadecimal digits
    QString origJobName;
    int layerCount = 0;
    int featureCount = 0;
};

struct EarlierImport {
    bool isOtherFlow = false;
    QString jobName;
    QString time; ///< as stored
    QString realName;
};

/// The records of an import. Each failure is said in the log and as a notice too.
class ImportChanges {
public:
    /// What record() would refuse now, before anything long is begun. Changes nothing.
    static Outcome mayImport(const QString &flowGuid, ImportKind kind, int userId);

    /// The last import of the same bytes, for this flow rather than for another. None is
    /// no failure.
    static Result<std::optional<EarlierImport>> earlier(const QString &flowGuid,
                                                        const QByteArray &sha256);

    /// Everything in one transaction: the file's record, the job's counts, original job
    /// name, user and time of the import, the flow's state, the audit.
    static Outcome record(const ImportedJob &job);
};

} // namespace KODMS::Services
