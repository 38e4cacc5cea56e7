// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Services {

class Database;

/// Something that was done to a record, or refused.
struct AuditEvent {
    int userId = 0;     ///< 0: the operator at the command line, or nobody
    QString action;     ///< "group.operation", for example "remark.UpdateTips"
    QString recordKind; ///< "flow", "user", "file", ...
    int recordId = 0;
    QString recordName;
    QString before;
    QString after;
    bool refused = false;
};

/// Writes the event at the present time, within the caller's transaction if there
/// is one. Long values are cut. Throws SqlError.
void writeAudit(Database &database, const AuditEvent &event);

} // namespace KODMS::Services
