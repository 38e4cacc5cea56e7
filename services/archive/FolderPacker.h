// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/notices/Outcome.h"
#include "services/notices/Progress.h"

#include <QString>

namespace KODMS::Services {

/// Packs a folder with everything in it into a new zip archive (deflate, UTF-8
/// names, in order of names; the folder's own name is the root of the entries).
/// The same folder gives the same bytes on the same machine. Refuses links, devices
/// and files that change meanwhile, naming them, a folder without files, and whatever
/// could not be unpacked again within the limits. On failure there is no archive.
/// Any thread.
/// Returns the number of files packed.
Result<qint64> packFolder(const QString &folder, const QString &zipPath,
                          const LimitSettings &limits, Progress &progress);

} // namespace KODMS::Services
