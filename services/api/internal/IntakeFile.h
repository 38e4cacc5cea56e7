// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/filestore/FileStore.h"

namespace KODMS::Services {

/// What a customer sent, from the path to the file store. Any thread.
class IntakeFile {
public:
    /// Looks at the path only: refuses what is missing, a link, a device, empty,
    /// or no archive.
    static Result<IntakeFile> at(const QString &path, const LimitSettings &limits);

    /// Without suffix: how the job is called until somebody says otherwise.
    const QString &baseName() const { return m_baseName; }

    /// "zip", "tgz", ..., "kos"; empty for a folder.
    const QString &type() const { return m_type; }

    const QString &storedName() const { return m_storedName; }

    /// Reads an archive to its end, or packs a folder in `staging`, then stores it.
    /// Leaves nothing in `staging`, and nothing in the store on failure.
    Outcome putInto(FileStore &store, const QString &staging, Progress &progress) const;

private:
    Outcome putArchive(FileStore &store, Progress &progress) const;
    Outcome putFolder(FileStore &store, const QString &staging, Progress &progress) const;

    QString m_path;
    QString m_baseName;
    QString m_type;
    QString m_storedName;
    LimitSettings m_limits;
    bool m_isFolder = false;
};

} // namespace KODMS::Services
