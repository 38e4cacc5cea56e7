// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/FileStore.h"
#include "services/filestore/gridfs/GridFsFile.h"
#include "services/filestore/gridfs/GridFsPulse.h"

namespace KODMS::Services {

/// The hold of a GridFS store: while it is heard of, removed files keep their chunks and
/// a document that leads to them.
class GridFsHold final : public StoreHold {
public:
    static Result<std::unique_ptr<StoreHold>> create(const std::shared_ptr<GridFsServer> &server);
    ~GridFsHold() override;

    /// A file of another client, which has no SHA-256 recorded, is read for it.
    Result<StoredFileInfo> find(const QString &name) const override;
    Outcome read(const QString &name, const ByteSink &sink, Progress &progress) const override;

private:
    GridFsHold(std::shared_ptr<GridFsServer> server, std::unique_ptr<GridFsPulse> pulse);
    Result<GridFsFile> file(const QString &name) const;

    const std::shared_ptr<GridFsServer> m_server;
    std::unique_ptr<GridFsPulse> m_pulse;
};

} // namespace KODMS::Services
