// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>

namespace KODMS::Services {

/// What the records need to know of the file store behind them.
class StoredFiles {
public:
    virtual ~StoredFiles() = default;

    /// Whether a whole file is stored under this name; failure when nobody can tell.
    virtual Result<bool> has(const QString &storedName) = 0;

    /// Takes the stored file away for good. Called after the deletion of its
    /// record was committed. A file that another program took away meanwhile is gone
    /// as well; failure when it may still be there.
    virtual Outcome removeBody(const QString &storedName) = 0;
};

} // namespace KODMS::Services
