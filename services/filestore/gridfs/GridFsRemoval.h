// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/gridfs/GridFsCatalog.h"

namespace KODMS::Services {

/// Takes files away so that a kill at any moment leaves either the file or a document in
/// BUCKET.kodms.removed, from which the next sweep finishes. While a backup holds the
/// store, the chunks stay where the hold finds them.
class GridFsRemoval {
public:
    explicit GridFsRemoval(const GridFsPlace &place) : m_place(place) {}

    /// Everything under the name; failure when there is nothing.
    Outcome remove(const QString &name) const;
    /// Chunks that no file has, the last one first, some at a time.
    Outcome removeChunks(const GridFsId &id) const;
    /// The chunks of a removed file, and then its document in BUCKET.kodms.removed.
    Outcome finish(const GridFsId &id) const;

    /// Somebody holds the store, or was killed while holding it.
    Result<bool> isHeld() const;

    /// The number of the last chunk, -1 when it is no number; nothing when there is no chunk.
    Result<std::optional<qint64>> lastChunk(const GridFsId &id) const;

private:
    Outcome removeOne(const GridFsFile &file) const;

    const GridFsPlace &m_place;
};

} // namespace KODMS::Services
