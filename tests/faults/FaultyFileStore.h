// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/FileStore.h"

namespace KODMS::Tests {

/// A file store with a fault plan before it.
class FaultyFileStore final : public Services::FileStore {
public:
    /// As FileStore::create() makes them.
    static Services::Result<std::unique_ptr<Services::FileStore>>
    create(const Services::FileStoreSettings &settings);

    Services::Outcome put(const QString &localPath, const QString &name,
                          Services::Progress &progress) override;
    Services::Outcome get(const QString &name, const QString &localPath,
                          Services::Progress &progress) const override;
    Services::Outcome remove(const QString &name) override;
    Services::Result<bool> has(const QString &name) const override;
    Services::Result<Services::StoredFileInfo> find(const QString &name) const override;
    Services::Result<QVector<Services::StoredFileInfo>> list() const override;
    Services::Outcome verify(const QString &name, Services::Progress &progress) const override;
    Services::Result<std::unique_ptr<Services::StoreHold>> hold() override;
    bool isPutterAlive(const QString &name) const override;
    Services::Result<QStringList> leftovers() const override;
    Services::Outcome sweep() override;
    QString placeText() const override;

private:
    explicit FaultyFileStore(std::unique_ptr<Services::FileStore> inner) : m_inner(std::move(inner))
    {
    }

    std::unique_ptr<Services::FileStore> m_inner;
};

} // namespace KODMS::Tests
