// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/disk/FileLock.h"
#include "services/records/DatabaseFile.h"

#include <memory>

namespace KODMS::Services {

/// One moment of the records in a file of its own, taken while others write. Made
/// beside the database; goes with the object, or, after a kill, with the next one.
/// Any thread: uses connections of its own.
class DatabaseSnapshot {
public:
    static Result<std::unique_ptr<DatabaseSnapshot>> take(const DatabaseSettings &settings);
    ~DatabaseSnapshot();
    DatabaseSnapshot(const DatabaseSnapshot &) = delete;
    DatabaseSnapshot &operator=(const DatabaseSnapshot &) = delete;

    const QString &path() const { return m_path; }

    const DatabaseContents &contents() const { return m_contents; }

private:
    DatabaseSnapshot(QString path, FileLock lock);
    Outcome fill(const DatabaseSettings &settings);

    QString m_path;
    FileLock m_lock;
    DatabaseContents m_contents;
};

} // namespace KODMS::Services
