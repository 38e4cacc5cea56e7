// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/FileStore.h"

#include <functional>

namespace KODMS::Tests {

/// The store of the settings, where something else happens while a file is being removed.
class WatchedFileStore final : public Services::FileStore {
public:
    WatchedFileStore(std::unique_ptr<Services::FileStore> inner,
                     std::function<void()> whileRemoving)
        : m_inner(std::move(inner)), m_whileRemoving(std::move(whileRemoving))
    {
    }

    Services::Outcome put(const QString &localPath, const QString &name,
                          Services::Progress &progress) override
    {
        return m_inner->put(localPath, name, progress);
    }

    Services::Outcome get(const QString &name, const QString &localPath,
                          Services::Progress &progress) const override
    {
        return m_inner->get(name, localPath, progress);
    }

    Services::Outcome remove(const QString &name) override
    {
        m_whileRemoving();
        return m_inner->remove(name);
    }

    Services::Result<bool> has(const QString &name) const override { return m_inner->has(name); }

    Services::Result<Services::StoredFileInfo> find(const QString &name) const override
    {
        return m_inner->find(name);
    }

    Services::Result<QVector<Services::StoredFileInfo>> list() const override
    {
        return m_inner->list();
    }

    Services::Outcome verify(const QString &name, Services::Progress &progress) const override
    {
        return m_inner->verify(name, progress);
    }

    Services::Result<std::unique_ptr<Services::StoreHold>> hold() override
    {
        return m_inner->hold();
    }

    bool isPutterAlive(const QString &name) const override { return m_inner->isPutterAlive(name); }

    Services::Result<QStringList> leftovers() const override { return m_inner->leftovers(); }

    Services::Outcome sweep() override { return m_inner->sweep(); }

    QString placeText() const override { return m_inner->placeText(); }

private:
    std::unique_ptr<Services::FileStore> m_inner;
    std::function<void()> m_whileRemoving;
};

} // namespace KODMS::Tests
