// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/Backup.h"
#include "services/api/internal/BackupManifest.h"
#include "services/config/Configuration.h"

namespace KODMS::Services {

class DatabaseSnapshot;
class TarWriter;

/// Makes one backup file. Any thread.
class BackupWriter {
public:
    BackupWriter(const Configuration &configuration, FileStore &store, Progress &progress)
        : m_configuration(configuration), m_store(store), m_progress(progress)
    {
    }

    Result<BackupSummary> write(const QString &path);

private:
    Outcome describe(const DatabaseSnapshot &snapshot, const StoreHold &hold);
    Outcome writeAll(TarWriter &tar, const DatabaseSnapshot &snapshot, const StoreHold &hold);
    Outcome writeRecords(TarWriter &tar, const QString &path);

    const Configuration &m_configuration;
    FileStore &m_store;
    Progress &m_progress;
    BackupManifest m_manifest;
};

/// The summary of what a manifest lists.
BackupSummary summaryOf(const BackupManifest &manifest);

} // namespace KODMS::Services
