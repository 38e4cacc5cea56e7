// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>

namespace KODMS::Services {

/// Where an entry of an archive goes: a path below the target folder, separated by
/// "/", that Linux and Windows can both hold.
struct EntryPath {
    QString path;
    bool isMapped = false; ///< some character or name had to be replaced

    /// Refuses absolute paths, drives, ".." and what no file system holds, naming
    /// the entry. Backslashes separate like slashes.
    static Result<EntryPath> of(const QString &name);

    /// The path that a link's text leads to, seen from the link; refused when it
    /// leaves the target folder.
    static Result<EntryPath> ofLink(const QString &linkPath, const QString &text);
};

/// Refusals name the entry that they are about.
Outcome entryRefused(const QString &entry, const QString &reason, const QString &cause);

} // namespace KODMS::Services
