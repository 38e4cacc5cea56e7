// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/disk/FileHandle.h"

#include <memory>

namespace KODMS::Services {

/// Where the library that makes workbooks writes the one that shall become a file. On Windows it
/// takes no file that we hold open, and no path that is longer than usual: there it writes among
/// the temporary files, and what it has written is copied.
class BookPlace {
public:
    explicit BookPlace(FileHandle &file);
    ~BookPlace();
    BookPlace(const BookPlace &) = delete;
    BookPlace &operator=(const BookPlace &) = delete;

    const QString &path() const { return m_path; }

    /// The file holds what the library has written.
    Outcome deliver();

private:
    FileHandle &m_file;
    QString m_path;
};

} // namespace KODMS::Services
