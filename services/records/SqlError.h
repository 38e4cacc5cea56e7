// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <exception>

namespace KODMS::Services {

/// A statement or a connection that failed. Thrown by Database, SqlQuery and
/// Transaction; caught where a record service turns it into false and a notice.
class SqlError : public std::exception {
public:
    enum class Kind {
        Busy,       ///< another program held the database longer than the busy time-out
        Constraint, ///< a rule of the schema said no
        Full,       ///< no space left
        ReadOnly,   ///< the database may not be written
        Corrupt,    ///< damaged, or not a database at all
        Lost,       ///< the connection to the database is gone, or was never there
        Refused,    ///< the server is there, and does not let the account in
        Missing,    ///< the server is there, the database is not
        Unfit,      ///< the database, or what is said of it, cannot be used as it is
        Forbidden,  ///< the account may not do that
        Timeout,    ///< the statement took longer than the statement time-out
        Unsure,     ///< the connection was lost while saving: it may be saved or not
        Other
    };

    /// `said` tells people more than the kind does, translated.
    SqlError(Kind kind, const QString &statement, const QString &driverText,
             const QString &said = {});

    Kind kind() const { return m_kind; }

    /// The statement's text or name; empty when none was running.
    const QString &statement() const { return m_statement; }

    const QString &driverText() const { return m_driverText; }

    /// True when the same may succeed later of itself.
    bool isPassing() const
    {
        return m_kind == Kind::Lost || m_kind == Kind::Busy || m_kind == Kind::Timeout;
    }

    /// What to tell people, translated.
    QString userText() const;

    /// The same for those who set the database up: with the driver's own words, unless it
    /// says everything itself.
    QString detailedText() const;

    /// Statement and driver text, for the log.
    QString logText() const;

    const char *what() const noexcept override { return m_what.constData(); }

private:
    Kind m_kind;
    QString m_statement;
    QString m_driverText;
    QString m_said;
    QByteArray m_what;
};

} // namespace KODMS::Services
