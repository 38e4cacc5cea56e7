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

    /// Which files the records name, and that the source has them; that the target holds
    /// none but of these. Changes nothing. Throws SqlError.
    Outcome prepare(Database &records);

    /// One after the other; each is read back. A file that arrived before stays.
    Outcome copy(Progress &progress);

    qint64 files() const { return m_names.size(); }

    qint64 bytes() const { return m_bytes; }

    qint64 unrecorded() const { return m_unrecorded; }

private:
    static QStringList recordedNames(Database &records);
    Outcome readSource(const QStringList &names);
    Outcome checkTarget();
    Outcome copyOne(const StoredFileInfo &file, Progress &progress);

    FileStore &m_from;
    FileStore &m_to;
    QString m_passing;
    QStringList m_names;
    QHash<QString, StoredFileInfo> m_source;
    qint64 m_bytes = 0;
    qint64 m_unrecorded = 0;
};

} // namespace KODMS::Services
