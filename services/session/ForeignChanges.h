// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/WriteListener.h"

#include <QSet>
#include <QString>
#include <QtGlobal>

#include <optional>

namespace KODMS::Services {

class Database;

/// Counts the records that others have changed since the desks last read them: other
/// programs, and the same person at another desk. What this connection wrote is not
/// counted. In the thread of the records.
class ForeignChanges final : public WriteListener {
public:
    explicit ForeignChanges(Database &database);
    ~ForeignChanges() override;

    ForeignChanges(const ForeignChanges &) = delete;
    ForeignChanges &operator=(const ForeignChanges &) = delete;

    /// What is there now is known: counts from here, from zero. Throws SqlError.
    void begin();

    /// Counts no more and costs nothing until begin().
    void end();

    bool isCounting() const { return m_known.has_value(); }

    /// Reads on, at most a thousand changes at once. Throws SqlError; what was counted
    /// stays. Not inside a transaction of this connection.
    void look();

    /// Records, and one more when something was written and nobody said what.
    int count() const;

    void writeBegins() override;
    void writeEnds() override;
    void written() override;

private:
    /// How far all writers have come.
    struct Mark {
        qint64 version = 0;
        qint64 event = 0;
        qint64 change = 0;
        QString moment;                       ///< as the engine says it
        QString writer = QStringLiteral("0"); ///< the transaction that asked
        bool isPassed = false;                ///< others wrote between the mark before and this

        /// Whether somebody wrote between the mark before, which is `known`, and this.
        bool isBeyond(const Mark &known) const
        {
            return isPassed || version != known.version || event != known.event ||
                   change != known.change;
        }
    };

    Mark readMark();
    bool readEvents(Mark &upTo);

    Database &m_database;
    std::optional<Mark> m_known; ///< nothing while not counting
    Mark m_own;                  ///< at the end of a write that is not on the disk yet
    QSet<QString> m_records;
    bool m_hasUnnamed = false;
};

} // namespace KODMS::Services
