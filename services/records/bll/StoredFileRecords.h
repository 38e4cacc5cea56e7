// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVector>

#include <optional>

namespace KODMS::Services {

class Database;

enum class StoredFileKind { Original = 0, ImportedJob = 1, RobotResult = 2 };

/// The record of a stored file.
struct StoredFileRow {
    int id = 0;
    QString guid;
    QString baseName;
    QString storedName;
    QString fileType; ///< empty for one stored from a folder
    QString customerCode;
    StoredFileKind kind = StoredFileKind::Original;
};

/// The records of stored files. Throws SqlError.
class StoredFileRecords {
public:
    explicit StoredFileRecords(Database &database) : m_database(database) {}

    std::optional<StoredFileRow> byGuid(const QString &guid);
    std::optional<StoredFileRow> byStoredName(const QString &storedName);
    /// A GUID that names a record goes before a stored name of the same letters.
    std::optional<StoredFileRow> byGuidOrName(const QString &text);

    /// True when anything recorded is stored under this name, a question's picture too.
    bool isRecorded(const QString &storedName);

    /// Returns the new id.
    int insert(const StoredFileRow &file, int state, int userId);
    void remove(int id);

    /// The flows that use the file now, by their desks' rows or their own.
    QVector<int> flowsOf(int id);

    /// Rows of flows and of the original-file desk that name the file.
    int users(int id);

private:
    Database &m_database;
};

} // namespace KODMS::Services
