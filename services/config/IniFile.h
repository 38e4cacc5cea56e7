// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>
#include <QVector>

#include <optional>

namespace KODMS::Services {

/// A UTF-8 INI file, read line by line and taken literally: a backslash in a
/// Windows path and a comma in a name stay what they are.
class IniFile {
public:
    struct Entry {
        QString section;
        QString key;
        QString value;
        int line = 0; ///< counted from 1
    };

    /// Fails, naming file and line, for a file that cannot be read, is no UTF-8
    /// text, or has a line that is neither section, key = value nor comment.
    static Result<IniFile> read(const QString &path);

    const QVector<Entry> &entries() const { return m_entries; }

    std::optional<QString> value(const QString &section, const QString &key) const;

private:
    Outcome parse(const QString &path, const QString &text);
    Outcome parseLine(const QString &path, int number, const QString &line, QString &section);

    QVector<Entry> m_entries;
};

} // namespace KODMS::Services
