// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/internal/BackupReader.h"
#include "services/config/Configuration.h"
#include "services/disk/FileHandle.h"
#include "services/filestore/LocalTarget.h"

#include <QSet>

#include <memory>

namespace KODMS::Services {

/// Fills an empty installation from a backup. The database gets its name last, so
/// there is an installation only when everything is there; until then whatever was
/// made goes with the object. Files of the same backup that an interrupted restore
/// left in the store are taken as they are. Any thread.
class BackupRestore final : private BackupVisitor {
public:
    explicit BackupRestore(Configuration configuration);
    ~BackupRestore() override;
    BackupRestore(const BackupRestore &) = delete;
    BackupRestore &operator=(const BackupRestore &) = delete;

    Result<BackupManifest> run(const QString &path, Progress &progress);

private:
    Outcome manifest(const BackupManifest &manifest) override;
    Outcome begin(const StoredFileInfo &part, bool isRecords) override;
    Outcome data(const char *bytes, qint64 size) override;
    Outcome end() override;

    Outcome refuseExisting() const;
    Outcome openStore();
    Outcome endRecords();
    Outcome endBody();
    Outcome refuseForeign(const BackupManifest &manifest);
    Outcome checkRecords(const BackupManifest &manifest);
    Outcome publish();

    Configuration m_configuration;
    std::unique_ptr<FileStore> m_store;
    QString m_newDatabase; ///< until it gets its name
    FileHandle m_records;
    LocalTarget m_body;           ///< of a file on its way into the store
    FileHandle *m_open = nullptr; ///< of the two, what is being written
    StoredFileInfo m_part;
    QSet<QString> m_present; ///< names that were in the store already
    QStringList m_put;
    bool m_savedConfiguration = false;
    bool m_isWhole = false;
};

} // namespace KODMS::Services
