// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/FileStore.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace KODMS::Services {

class Database;

/// The files of an installation on their way to another store.
class FileCopy {
public:
    /// `passing` is a folder for one file at a time.
    FileCopy(FileStore &from, FileStore &to, QString passing);

    /// Refuses two names of one store: a file that is put there must not be found here. From
    /// now on every file of the source can be read, whoever removes it. `records` are those of
    /// the source, not yet held in one moment. Throws SqlError.
    Outcome begin(Database &records);

    /// Which files the records name, and that the source has them; that the target holds
    /// none, or, when an interrupted copy goes on, none but of these. Throws SqlError.
    Outcome prepare(Database &records, bool goesOn);

    /// One after the other; each is read back. A file that arrived before stays.
    Outcome copy(Progress &progress);

    qint64 files() const { return m_names.size(); }

    qint64 bytes() const { return m_bytes; }

    qint64 unrecorded() const { return m_unrecorded; }

private:
    static QStringList recordedNames(Database &records);
    Outcome readSource(const QStringList &names);
    Result<StoredFileInfo> sourceFile(const QString &name) const;
    Outcome checkTarget(bool goesOn);
    Outcome copyOne(const StoredFileInfo &file, Progress &progress);
    Outcome passOn(const QString &name, Progress &progress);
    Outcome fetch(const QString &name, const QString &path, Progress &progress) const;
    Outcome refuseOneStore(bool hasFiles);

    FileStore &m_from;
    FileStore &m_to;
    QString m_passing;
    std::unique_ptr<StoreHold> m_hold; ///< of the source
    QStringList m_names;
    QHash<QString, StoredFileInfo> m_source;
    qint64 m_bytes = 0;
    qint64 m_unrecorded = 0;
};

} // namespace KODMS::Services
