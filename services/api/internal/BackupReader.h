// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/internal/BackupManifest.h"

namespace KODMS::Services {

class ArchiveReader;

/// Receives the parts of a backup, in its order; each end comes only after the
/// part's sum was found right.
class BackupVisitor {
public:
    virtual ~BackupVisitor() = default;
    virtual Outcome manifest(const BackupManifest &manifest) = 0;
    virtual Outcome begin(const StoredFileInfo &part, bool isRecords) = 0;
    virtual Outcome data(const char *bytes, qint64 size) = 0;
    virtual Outcome end() = 0;
};

/// Reads a backup to its last byte and compares every sum. Any thread.
class BackupReader {
public:
    explicit BackupReader(Progress &progress) : m_progress(progress) {}

    /// `visitor` null: only looks.
    Result<BackupManifest> read(const QString &path, BackupVisitor *visitor);

private:
    Outcome readManifest(ArchiveReader &tar);
    Outcome readPart(ArchiveReader &tar, const QString &entryName, const StoredFileInfo &part);
    Outcome readEnd(ArchiveReader &tar);
    Outcome open(ArchiveReader &tar, const QString &entryName);

    Progress &m_progress;
    BackupVisitor *m_visitor = nullptr;
    BackupManifest m_manifest;
};

} // namespace KODMS::Services
