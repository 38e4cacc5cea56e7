// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <string>

namespace KODMS::Services {

constexpr int LongestName = 500;
constexpr int LongestRemark = 10000;

/// A text that came through a contract: it is stored as it was given or refused,
/// never stored as something else. A byte order mark before it is no text.
class TextArgument {
public:
    /// Valid: UTF-8 without NUL, at most `longest` characters.
    TextArgument(const std::string &bytes, int longest);

    bool isValid() const { return m_cause.isEmpty(); }

    const QString &text() const { return m_text; }

    /// Why it is not valid: for the log, and for people (translated).
    const QString &cause() const { return m_cause; }

    const QString &userText() const { return m_userText; }

private:
    QString m_text;
    QString m_cause;
    QString m_userText;
};

/// The beginning of any bytes, fit for a log line.
QString shortText(const std::string &bytes);

} // namespace KODMS::Services
