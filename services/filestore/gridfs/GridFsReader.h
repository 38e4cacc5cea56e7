// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/gridfs/GridFsFile.h"
#include "services/filestore/gridfs/GridFsServer.h"

namespace KODMS::Services {

/// Hands the content of `file` to `sink` (which may be empty), in order. Fails unless it
/// is what was put: chunk after chunk of the right size, and the SHA-256 where one is
/// recorded. The next chunks come while the present one is hashed and taken.
Outcome readGridFsFile(const std::shared_ptr<GridFsServer> &server, const GridFsFile &file,
                       const ByteSink &sink, Progress &progress);

/// The same, and tells the SHA-256 of what was read.
Result<QByteArray> digestOfGridFsFile(const std::shared_ptr<GridFsServer> &server,
                                      const GridFsFile &file, Progress &progress);

} // namespace KODMS::Services
