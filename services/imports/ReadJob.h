// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/disk/FileHandle.h"
#include "services/notices/Progress.h"
#include "services/odbpp/OdbJob.h"

namespace KODMS::Services {

/// An ODB++ job on the user's disk, as it was when it was read.
struct ReadJob {
    QString path;
    OdbJob job;
    bool isFolder = false;
    QString type;            ///< of the archive: "zip", "tgz", ...; empty for a folder
    qint64 size = 0;         ///< of the archive, or of all files of the folder
    FileHandle::Stamp stamp; ///< of the archive

    /// Reads all of it. Refused: what is no readable job, links, and the CAM product's
    /// own archive, which needs no import. Any thread.
    static Result<ReadJob> at(const QString &path, const LimitSettings &limits, Progress &progress);

    /// Failure when the archive is not the one that was read.
    Outcome isUnchanged() const;
};

Outcome changedSinceRead(const QString &path);

} // namespace KODMS::Services
