// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/ShownRecords.h"
#include "services/records/bll/Transitions.h"

#include <QString>

#include <optional>

namespace KODMS::Services {

class Database;

/// Who did something to a flow, and when (as stored); 0 and empty: nobody yet.
struct FlowStamp {
    int userId = 0;
    QString time;
};

/// A flow with what its rules ask about.
struct FlowRow {
    int id = 0;
    QString guid;
    QString jobName;
    QString origJobName;
    QString customerCode;
    FlowState state;
    QString tips;
    int createUserId = 0;
    int origFileId = 0;
    QString origFileGuid;
    QString origStoredName;
    int importFileId = 0;
    QString importStoredName;
    QString importType;
    int resultFileId = 0;
    FlowStamp import;
    FlowStamp check;
    FlowStamp robotCheck;
    RowVersions versions;
    int executorId = 0;
    int checkerId = 0;
    int jobCompressId = 0; ///< its row of the original-file desk; 0: deleted
};

/// Reads single flows. Throws SqlError.
class FlowRecords {
public:
    explicit FlowRecords(Database &database) : m_database(database) {}

    std::optional<FlowRow> byGuid(const QString &guid);
    std::optional<FlowRow> byId(int id);
    std::optional<FlowRow> byJobName(const QString &jobName);

private:
    Database &m_database;
};

} // namespace KODMS::Services
