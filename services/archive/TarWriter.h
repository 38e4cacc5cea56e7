// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/archive/Utf8Locale.h"
#include "services/disk/FileHandle.h"

#include <memory>

struct archive;

namespace KODMS::Services {

/// Writes a tar archive that any tar can read, file by file, of any size. For one
/// thread.
class TarWriter {
public:
    /// `file` outlives the writer.
    static Result<std::unique_ptr<TarWriter>> create(FileHandle &file);
    ~TarWriter();
    TarWriter(const TarWriter &) = delete;
    TarWriter &operator=(const TarWriter &) = delete;

    /// What follows are `size` bytes of the file `name` (UTF-8).
    Outcome begin(const QString &name, qint64 size);
    Outcome write(const char *data, qint64 size);
    /// Without it the archive is not whole.
    Outcome finish();

private:
    explicit TarWriter(FileHandle &file);
    Outcome checked(int result);

    Utf8Locale m_locale{Utf8Locale::Use::Writing};
    FileHandle &m_file;
    archive *m_archive;
    Outcome m_fileFailure;
};

} // namespace KODMS::Services
