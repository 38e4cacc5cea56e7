// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/archive/ArchiveWalk.h"
#include "services/disk/FileLock.h"

namespace KODMS::Services {

/// A hidden folder beside the target in which an archive is unpacked. It goes with
/// the object; the remains of killed programs go when the next one is made there.
class UnpackFolder final : public ArchiveVisitor {
public:
    static Result<std::unique_ptr<UnpackFolder>> create(const QString &parentFolder);
    ~UnpackFolder() override;
    UnpackFolder(const UnpackFolder &) = delete;
    UnpackFolder &operator=(const UnpackFolder &) = delete;

    const QString &path() const { return m_path; }

    Outcome folder(const QString &path) override;
    Outcome beginFile(const QString &path) override;
    Outcome data(const char *bytes, qint64 size) override;
    Outcome endFile() override;
    Outcome copy(const QString &from, const QString &to) override;

private:
    UnpackFolder(QString path, FileLock lock);

    QString below(const QString &path) const { return m_path + QLatin1Char('/') + path; }

    QString m_path;
    FileLock m_lock;
    FileHandle m_file;
};

} // namespace KODMS::Services
