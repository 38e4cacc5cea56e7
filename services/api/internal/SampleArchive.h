// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>

namespace KODMS::Services::SampleArchive {

/// Writes a small archive at `path`: a zip for the suffix "zip", else a gzipped
/// tar. In it a folder `jobName` with two text files.
Outcome write(const QString &path, const QString &jobName);

} // namespace KODMS::Services::SampleArchive
