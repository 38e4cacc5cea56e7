// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/disk/FileHandle.h"
#include "services/filestore/FileStore.h"

namespace KODMS::Services {

struct StreamSums {
    qint64 size = 0;
    QByteArray sha256;
};

/// Reads `source` from its present position to the end, handing each piece to
/// `sink` (which may be empty) and to the hash. Fails when cancelled.
Result<StreamSums> streamHashed(FileHandle &source, const ByteSink &sink, Progress &progress);

/// Failure when the bytes read are not those that were recorded.
Outcome compareSums(const StoredFileInfo &recorded, const StreamSums &read);

} // namespace KODMS::Services
