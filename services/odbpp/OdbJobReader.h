// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/notices/Outcome.h"
#include "services/notices/Progress.h"
#include "services/odbpp/OdbJob.h"

namespace KODMS::Services {

/// Reads an ODB++ job: a folder, or an archive of any known type, which is not
/// unpacked to the disk. The job's folder may stand in other folders; more than one
/// job is refused. Whatever cannot be read, or could not be unpacked later, is
/// refused with file and line. Counted is what the matrix names. Memory does not
/// grow with the size of the job. Any thread.
Result<OdbJob> readOdbJob(const QString &path, const LimitSettings &limits, Progress &progress);

} // namespace KODMS::Services
