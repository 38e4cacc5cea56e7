// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/StoreCheck.h"
#include "services/config/Configuration.h"
#include "services/filestore/FileStore.h"
#include "services/records/Database.h"

#include <QHash>

namespace KODMS::Services {

/// One check, from first to last look. Has a connection of its own, so that it may
/// run beside the desks' thread. Desks go on working: what looks wrong is looked at
/// again before it is reported. Throws SqlError.
class StoreCheckRun {
public:
    StoreCheckRun(const Configuration &configuration, FileStore &store, const CheckOptions &options,
                  int userId);

    Result<CheckReport> run(Progress &progress);

private:
    void lookAtConfiguration();
    void lookAtDatabase();
    void lookAtMarks();
    void readRecords();
    Outcome readStore();
    Outcome compare();
    Outcome readContents(Progress &progress);
    Outcome lookAtLeftovers();

    Outcome missing(const QString &name);
    Outcome unrecorded(const QString &name);
    bool isRecorded(const QString &name);
    bool repaired(const QString &name, const char *what, const Outcome &done);
    void forgetMark(const QString &name);
    CheckFinding &add(const char *kind, const QString &name, const QString &text, bool isProblem);

    const Configuration &m_configuration;
    FileStore &m_store;
    CheckOptions m_options;
    int m_userId;
    Database m_database;
    CheckReport m_report;
    QHash<QString, bool> m_records; ///< stored name: has a body
    QHash<QString, bool> m_marks;   ///< stored name: its record is gone
    QVector<StoredFileInfo> m_files;
};

} // namespace KODMS::Services
