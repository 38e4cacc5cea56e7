// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/archive/ArchiveWalk.h"

namespace KODMS::Services {

/// Reads a whole archive without writing anything, so that one that could not be
/// unpacked later is refused when it arrives, with the entry named.
Result<ArchiveSummary> probeArchive(const QString &path, const LimitSettings &limits,
                                    Progress &progress);

} // namespace KODMS::Services
