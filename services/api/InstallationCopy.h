// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "services/notices/Outcome.h"
#include "services/notices/Progress.h"

#include <QString>
#include <QVector>

namespace KODMS::Services {

/// A table that stands in both installations now.
struct CopiedTableProof {
    QString table;
    qint64 rows = 0;
    QString sha256; ///< over every row, read on both sides and equal
};

struct CopySummary {
    QVector<CopiedTableProof> tables;
    qint64 files = 0;      ///< each read back on the target with the SHA-256 of the source
    qint64 bytes = 0;      ///< of the files
    qint64 unrecorded = 0; ///< files of the source that no record names: left behind
};

/// Moves a whole installation, records and files, to other places, other engines included.
class KODMS_SERVICES_API InstallationCopy {
public:
    /// From the installation of one configuration file to that of another, which is fresh:
    /// just set up, or not made yet. The source is read as of one moment and never changed.
    /// The target can be used only once everything is there and was compared; until then it
    /// says so, and the copy is repeated, with the files that have arrived left in place.
    /// Progress in bytes for the files, then in rows. Nothing runs meanwhile or afterwards.
    static Result<CopySummary> copy(const QString &fromIni, const QString &toIni,
                                    Progress &progress);
};

} // namespace KODMS::Services
