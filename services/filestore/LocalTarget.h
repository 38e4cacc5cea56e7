// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/disk/FileHandle.h"

namespace KODMS::Services {

/// A local file in the making, beside the path that it will have. What stands at
/// that path is removed first; the new file appears there only when whole. Remains
/// of killed writers in the same folder are removed on the way.
class LocalTarget {
public:
    static Result<LocalTarget> create(const QString &path);
    LocalTarget() = default;
    LocalTarget(LocalTarget &&) = default;
    LocalTarget &operator=(LocalTarget &&) = default;
    ~LocalTarget();
    LocalTarget(const LocalTarget &) = delete;
    LocalTarget &operator=(const LocalTarget &) = delete;

    FileHandle &file() { return m_file; }

    /// Gives the file its name.
    Outcome publish();

private:
    LocalTarget(QString path, FileHandle file) : m_path(std::move(path)), m_file(std::move(file)) {}

    QString m_path;
    FileHandle m_file;
};

} // namespace KODMS::Services
