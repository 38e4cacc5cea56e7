// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/FileStore.h"
#include "services/filestore/gridfs/GridFsFile.h"
#include "services/filestore/gridfs/GridFsPulse.h"

namespace KODMS::Services {

/// The file store on a server that speaks the MongoDB protocol: a bucket of GridFS, which
/// every other GridFS client can read.
class GridFsStore final : public FileStore {
public:
    /// Fails when the server cannot be reached. Sweeps what killed programs left.
    static Result<std::unique_ptr<FileStore>> open(const FileStoreSettings &settings);
    ~GridFsStore() override;

    Outcome put(const QString &localPath, const QString &name, Progress &progress) override;
    Outcome get(const QString &name, const QString &localPath, Progress &progress) const override;
    Outcome remove(const QString &name) override;
    Result<bool> has(const QString &name) const override;
    Result<StoredFileInfo> find(const QString &name) const override;
    Result<QVector<StoredFileInfo>> list() const override;
    Outcome verify(const QString &name, Progress &progress) const override;
    Result<std::unique_ptr<StoreHold>> hold() override;
    /// Also true of a file that another client put: nobody knows when that one is done.
    bool isPutterAlive(const QString &name) const override;
    Result<QStringList> leftovers() const override;
    Outcome sweep() override;
    QString placeText() const override;

private:
    explicit GridFsStore(std::shared_ptr<GridFsServer> server) : m_server(std::move(server)) {}

    Result<GridFsPulse *> pulse();
    Result<GridFsFile> file(const QString &name) const;
    Outcome read(const GridFsFile &file, const ByteSink &sink, Progress &progress) const;
    Result<bool> isHeardOf(const QString &owner) const;

    const std::shared_ptr<GridFsServer> m_server;
    std::mutex m_pulseMutex;
    std::unique_ptr<GridFsPulse> m_pulse;
};

} // namespace KODMS::Services
