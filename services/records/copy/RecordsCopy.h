// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"
#include "services/notices/Progress.h"
#include "services/records/copy/CopiedTable.h"

#include <QString>
#include <QVector>

namespace KODMS::Services {

class Database;

/// A table on both sides.
struct CopiedRows {
    QString table;
    qint64 rows = 0;
    QString sha256; ///< of every row, the same on both sides
};

/// Moves all records from one database into another, whichever engines they have. The
/// target is marked as unfinished first, and forgets the mark in the transaction that
/// brings the records. Throws SqlError.
class RecordsCopy {
public:
    RecordsCopy(Database &from, Database &to);

    /// Refuses a source of another schema version than this program's.
    static Outcome checkSource(Database &from);

    /// Refuses a target that is the source, or has records in it. One without tables gets
    /// them, and the mark. Changes nothing else.
    Outcome prepareTarget();

    /// True when the target was prepared before, by a copy that did not come to its end.
    bool goesOn() const { return m_goesOn; }

    /// The target cannot be used from now until a copy has succeeded.
    void mark();

    /// In one transaction of the target; the caller has begun a reading one of the source.
    /// Progress in rows.
    Result<QVector<CopiedRows>> copy(Progress &progress);

    /// Of the source, for the progress.
    qint64 sourceRows();

private:
    Outcome installTarget();
    Outcome refuseSource();
    Outcome refuseUsed();
    bool hasRows(const char *table, int moreThan);
    void clearTarget();
    void dropWhatCanWait();
    void makeWhatWaited();
    void countWhatArrived();
    Result<CopiedRows> copyTable(const CopiedTable &table, Progress &progress);
    void copyCounter(const CopiedTable &table);

    Database &m_from;
    Database &m_to;
    bool m_goesOn = false;
};

} // namespace KODMS::Services
