// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/gridfs/Bson.h"
#include "services/filestore/gridfs/BsonView.h"
#include "services/filestore/gridfs/GridFsId.h"
#include "services/filestore/gridfs/GridFsServer.h"

#include <array>
#include <functional>
#include <vector>

namespace KODMS::Services {

/// The collections of one bucket through one connection, which belongs to this object
/// and to one thread. The first two are GridFS as every client knows it, the others
/// are ours:
///   BUCKET.files, BUCKET.chunks   the stored files and their contents
///   BUCKET.kodms.puts             one document for each name that is being put
///   BUCKET.kodms.removed          files whose contents are still to go
///   BUCKET.kodms.live             programs that put, and backups that hold
///   BUCKET.kodms.strays           chunks that nothing led to when a sweep came by
/// A change is acknowledged by the majority of the servers.
class GridFsPlace {
public:
    enum Part { Files, Chunks, Puts, Removed, Live, Strays, PartCount };

    explicit GridFsPlace(std::shared_ptr<GridFsServer> server);
    ~GridFsPlace();
    GridFsPlace(const GridFsPlace &) = delete;
    GridFsPlace &operator=(const GridFsPlace &) = delete;

    const GridFsServer &server() const { return *m_server; }

    /// Each document that matches, until `take` returns false.
    Outcome each(Part part, const Bson &filter, const Bson &options,
                 const std::function<bool(const BsonView &)> &take) const;
    /// Each value that a field has anywhere, once. The first field of an index: no content is read.
    Outcome eachValue(Part part, const char *field,
                      const std::function<bool(const GridFsId &)> &take) const;
    Result<bool> any(Part part, const Bson &filter) const;

    Outcome insert(Part part, const std::vector<Bson> &documents) const;
    Outcome insert(Part part, const Bson &document) const;
    /// How many were changed.
    Result<qint64> update(Part part, const Bson &filter, const Bson &change) const;
    /// The same, or makes the document; false when one with its key but without the
    /// rest of the filter is there.
    Result<bool> updateOrInsert(Part part, const Bson &filter, const Bson &change) const;
    /// How many were removed.
    Result<qint64> remove(Part part, const Bson &filter) const;

    /// The two indexes that every GridFS client relies on, unless there are files already.
    Outcome makeIndexes() const;
    /// The server's clock, in milliseconds since 1970.
    Result<qint64> now() const;

private:
    using Take = std::function<bool(const BsonView &)>;
    Outcome readAll(mongoc_cursor_t *cursor, const Take &take) const;
    Outcome command(const char *database, const Bson &command, bson_t *reply) const;
    Outcome failure(const char *doing, const bson_error_t &error) const;
    QString nameOf(Part part) const;
    mongoc_collection_t *collection(Part part) const;

    const std::shared_ptr<GridFsServer> m_server;
    mongoc_client_t *const m_client;
    mutable std::array<mongoc_collection_t *, PartCount> m_collections{};
};

} // namespace KODMS::Services
