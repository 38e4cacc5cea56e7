// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/FileStore.h"

namespace KODMS::Services {

/// A stored file on disk is a folder that bears its name and holds one file, the
/// body, whose own name tells SHA-256, size and who put it. So one rename publishes
/// or removes body and sums together, and nothing on disk is ever half a stored file.
struct StoredEntry {
    StoredFileInfo info;
    QString owner; ///< of the IncomingFolder that it came through
    QString bodyPath;

    static QString bodyName(const QByteArray &sha256, qint64 size, const QString &owner);
    /// Reads the folder; failure when it is missing or holds something else.
    static Result<StoredEntry> read(const QString &name, const QString &folder);
};

} // namespace KODMS::Services
