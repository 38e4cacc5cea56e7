// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/archive/ArchiveWalk.h"

namespace KODMS::Services {

/// Unpacks an archive into a folder, whole or not at all. Type and name encoding
/// are told by content. Files that stand in the folder stay, except those that the
/// archive has itself. Any thread.
/// Returns the number of files written; 0 for an archive without files, which then
/// changes nothing.
Result<qint64> unpackArchive(const QString &archivePath, const QString &targetFolder,
                             const LimitSettings &limits, Progress &progress);

} // namespace KODMS::Services
