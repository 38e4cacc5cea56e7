// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/archive/ArchiveWalk.h"
#include "services/archive/FileWriters.h"
#include "services/disk/FileLock.h"

#include <QSet>

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

    /// Returns when everything is written.
    Outcome finish();
    /// Somebody waits for the object to go: large contents go a little later.
    void abandon();

private:
    UnpackFolder(QString path, FileLock lock);

    QString below(const QString &path) const { return m_path + QLatin1Char('/') + path; }

    Outcome makeFolderOf(const QString &path);
    Outcome openFile();

    QString m_path;
    FileLock m_lock;
    QSet<QString> m_folders; ///< made so far
    QSet<QString> m_files;   ///< begun so far
    QString m_filePath;
    std::vector<char> m_content; ///< of a file that may turn out to be small
    FileHandle m_file;           ///< of one that did not
    std::unique_ptr<FileWriters> m_writers;
};

} // namespace KODMS::Services
