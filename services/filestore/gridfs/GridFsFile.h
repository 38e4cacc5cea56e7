// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/FileStore.h"
#include "services/filestore/gridfs/Bson.h"
#include "services/filestore/gridfs/BsonView.h"
#include "services/filestore/gridfs/GridFsId.h"

#include <optional>

namespace KODMS::Services {

/// The document of a file in BUCKET.files. Ours tell in their metadata the SHA-256 of
/// the content and who put it; those of other clients do not.
struct GridFsFile {
    GridFsId id;
    QString name;
    qint64 size = 0;
    qint64 chunkSize = 0;
    QByteArray sha256; ///< empty: another client put it
    QString owner;     ///< of the GridFsPulse of the program that put it

    /// Nothing when it is no document of a file.
    static std::optional<GridFsFile> parse(const BsonView &document);
    Bson toBson(qint64 uploadedAt) const;

    bool isOurs() const { return !sha256.isEmpty(); }

    StoredFileInfo info() const { return {name, size, sha256}; }

    /// How many bytes chunk `n` holds; 0 behind the last one.
    qint64 sizeOfChunk(qint64 n) const
    {
        return qBound<qint64>(0, size - n * chunkSize, chunkSize);
    }
};

} // namespace KODMS::Services
