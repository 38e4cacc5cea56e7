// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"

#include <memory>
#include <mongoc/mongoc.h>

namespace KODMS::Services {

/// The connections to one GridFS server, shared by all threads.
class GridFsServer {
public:
    /// Reads the address, and the password from its file; connects to nothing yet.
    static Result<std::shared_ptr<GridFsServer>> at(const FileStoreSettings &settings);
    ~GridFsServer();
    GridFsServer(const GridFsServer &) = delete;
    GridFsServer &operator=(const GridFsServer &) = delete;

    /// Hosts and ports, without user and password.
    const QString &addressText() const { return m_address; }

    const QString &database() const { return m_database; }

    const QString &bucket() const { return m_bucket; }

    /// A connection for one thread, to be given back. Waits when a hundred are out.
    mongoc_client_t *take();
    void giveBack(mongoc_client_t *client);

private:
    GridFsServer(mongoc_client_pool_t *pool, QString address, QString database, QString bucket);

    mongoc_client_pool_t *const m_pool;
    const QString m_address;
    const QString m_database;
    const QString m_bucket;
};

} // namespace KODMS::Services
