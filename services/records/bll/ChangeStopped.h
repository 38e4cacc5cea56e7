// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace KODMS::Services {

/// Thrown inside a change to leave it; the change then undoes what it wrote.
class ChangeStopped : public std::exception {
public:
    enum class Kind {
        Refused, ///< a rule says no to this person: audited
        Failed   ///< what the caller gave names nothing, or makes no sense
    };

    ChangeStopped(Kind kind, const QString &cause, const QString &userText)
        : m_kind(kind), m_cause(cause), m_userText(userText), m_what(cause.toUtf8())
    {
    }

    Kind kind() const { return m_kind; }

    /// For the log, English.
    const QString &cause() const { return m_cause; }

    /// For people, translated.
    const QString &userText() const { return m_userText; }

    const char *what() const noexcept override { return m_what.constData(); }

private:
    Kind m_kind;
    QString m_cause;
    QString m_userText;
    QByteArray m_what;
};

} // namespace KODMS::Services
