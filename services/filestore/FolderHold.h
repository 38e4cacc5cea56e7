// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/disk/FileLock.h"
#include "services/filestore/FolderLayout.h"
#include "services/filestore/StoredEntry.h"

namespace KODMS::Services {

/// The hold of a folder store: while its lock file lives, removed files stay in
/// the trash, where it finds them.
class FolderHold final : public StoreHold {
public:
    static Result<std::unique_ptr<StoreHold>> create(const FolderLayout &layout);
    ~FolderHold() override;

    Result<StoredFileInfo> find(const QString &name) const override;
    Outcome read(const QString &name, const ByteSink &sink, Progress &progress) const override;

private:
    FolderHold(FolderLayout layout, FileLock lock);
    Result<StoredEntry> entry(const QString &name) const;

    FolderLayout m_layout;
    FileLock m_lock;
};

} // namespace KODMS::Services
