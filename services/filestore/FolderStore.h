// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/FolderLayout.h"
#include "services/filestore/IncomingFolder.h"
#include "services/filestore/StoredEntry.h"

#include <mutex>

namespace KODMS::Services {

/// The file store in a folder of this machine or of a file server.
class FolderStore final : public FileStore {
public:
    /// Opens or makes the place `database`/`bucket` under `root`, and sweeps what
    /// killed processes left there. Nothing is written before the first put.
    static Result<std::unique_ptr<FileStore>> open(const QString &root, const QString &database,
                                                   const QString &bucket);

    Outcome put(const QString &localPath, const QString &name, Progress &progress) override;
    Outcome get(const QString &name, const QString &localPath, Progress &progress) const override;
    Outcome remove(const QString &name) override;
    Result<bool> has(const QString &name) const override;
    Result<StoredFileInfo> find(const QString &name) const override;
    Result<QVector<StoredFileInfo>> list() const override;
    Outcome verify(const QString &name, Progress &progress) const override;
    Result<std::unique_ptr<StoreHold>> hold() override;
    bool isPutterAlive(const QString &name) const override;
    Result<QStringList> leftovers() const override;
    Outcome sweep() override;
    QString placeText() const override;

private:
    explicit FolderStore(FolderLayout layout) : m_layout(std::move(layout)) {}

    Result<StoredEntry> entry(const QString &name) const;
    Result<IncomingFolder *> incoming();
    Outcome fillSlot(const QString &localPath, const QString &slot, const QString &owner,
                     Progress &progress) const;
    Outcome publishSlot(const QString &slot, const QString &name) const;

    FolderLayout m_layout;
    std::mutex m_incomingMutex;
    std::unique_ptr<IncomingFolder> m_incoming;
};

} // namespace KODMS::Services
