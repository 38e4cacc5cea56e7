// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/FileStore.h"
#include "services/records/StoredFiles.h"

namespace KODMS::Services {

/// The file store as the records see it.
class StoreBehindRecords final : public StoredFiles {
public:
    explicit StoreBehindRecords(FileStore &store) : m_store(store) {}

    Result<bool> has(const QString &storedName) override;
    Outcome removeBody(const QString &storedName) override;

private:
    FileStore &m_store;
};

} // namespace KODMS::Services
