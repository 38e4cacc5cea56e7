// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/filestore/FileStore.h"
#include "services/records/RecordContext.h"
#include "services/records/bll/SessionMemory.h"
#include "services/search/ColumnIndex.h"
#include "services/session/ForeignChanges.h"
#include "services/session/StoreBehindRecords.h"

#include <functional>
#include <memory>

namespace KODMS::Services {

/// One open installation: configuration, records, file store, and what the session
/// remembers. Belongs to the thread that opened it.
class Runtime {
public:
    using OpenStore = std::function<Result<std::unique_ptr<FileStore>>(const FileStoreSettings &)>;

    /// Opens what the configuration file describes (empty: the default one) and
    /// brings an older database up to date.
    static Result<std::shared_ptr<Runtime>> open(const QString &iniPath,
                                                 const OpenStore &openStore = FileStore::create);

    /// The running one; null when there is none.
    static Runtime *current();
    static void setCurrent(const std::shared_ptr<Runtime> &runtime);

    ~Runtime();
    Runtime(const Runtime &) = delete;
    Runtime &operator=(const Runtime &) = delete;

    const Configuration &configuration() const { return m_configuration; }

    RecordContext &records() { return m_records; }

    FileStore &fileStore() { return *m_fileStore; }

    SessionMemory &memory() { return m_memory; }

    ColumnIndex &searchIndex() { return m_searchIndex; }

    ForeignChanges &foreignChanges() { return m_foreignChanges; }

    int schemaVersion() const { return m_schemaVersion; }

    /// Somebody else acts from now on; what was shown before counts no more.
    void setActor(const Actor &actor);

private:
    Runtime(Configuration configuration, std::unique_ptr<Database> database,
            std::unique_ptr<FileStore> fileStore, int schemaVersion);

    Outcome settleDeleteMarks();
    void beginForeignChangeLogAnew();
    bool isChangeLogForeign();
    void trimChangeLog();
    QStringList deleteMarks();
    QStringList removeMarkedBodies();
    void makeFolders() const;

    Configuration m_configuration;
    std::unique_ptr<FileStore> m_fileStore;
    StoreBehindRecords m_storedFiles;
    SessionMemory m_memory;
    RecordContext m_records;
    ForeignChanges m_foreignChanges;
    ColumnIndex m_searchIndex;
    int m_schemaVersion;
};

} // namespace KODMS::Services
