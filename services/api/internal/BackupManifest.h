// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/FileStore.h"

namespace KODMS::Services {

/// The first file of a backup: what the others are, with all their sums, and a sum
/// of its own. Plain text, a line each.
struct BackupManifest {
    QString time;   ///< UTC, ISO 8601
    QString engine; ///< of the database
    int schemaVersion = 0;
    qint64 flows = 0;
    StoredFileInfo records; ///< the database's copy
    QVector<StoredFileInfo> files;

    qint64 bytes() const;
    QByteArray toText() const;
    static Result<BackupManifest> parse(const QByteArray &text);

    static QString entryName();
    static QString recordsEntry();
    static QString fileEntry(const QString &storedName);
};

} // namespace KODMS::Services
