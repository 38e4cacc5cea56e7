// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "services/notices/Outcome.h"

#include <QString>
#include <QVector>

namespace KODMS::Services {

/// Something that was done to a job, or refused.
struct HistoryEntry {
    qint64 id = 0;  ///< later ones are larger
    QString time;   ///< local
    QString who;    ///< real name; empty: the operator at the command line
    QString action; ///< "group.operation", for example "remark.UpdateTips"
    QString about;  ///< a question's title; empty: the job itself
    QString before; ///< as the audit has it, with files as their owners named them
    QString after;  ///< the reason when it was refused
    bool isRefused = false;
};

struct HistoryPage {
    QString jobName;
    QVector<HistoryEntry> entries; ///< the latest first
    bool hasOlder = false;
};

/// The audit trail of one job, for those who may see the job. GUI thread.
class KODMS_SERVICES_API JobHistory {
public:
    static constexpr int pageSize = 100;

    /// A page of what happened before the event `before` (0: up to now). Refused, with
    /// a notice, for a flow outside of the signed-in user's scope.
    static Result<HistoryPage> of(const QString &flowGuid, qint64 before = 0);
};

} // namespace KODMS::Services
