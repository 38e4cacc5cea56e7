// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/console/PasswordSource.h"

#include "apps/console/Terminal.h"

#include <QFile>

namespace KODMS::Console {

using Services::Outcome;
using Services::Result;

Result<QString> PasswordSource::existing(const QString &question) const
{
    return m_file.isEmpty() ? asked(question) : fromFile();
}

Result<QString> PasswordSource::chosen(const QString &question) const
{
    if (!m_file.isEmpty())
        return fromFile();
    const Result<QString> first = asked(question);
    if (!first)
        return first;
    const Result<QString> again = asked(QStringLiteral("The same once more:"));
    if (again && again.value != first.value)
        return Outcome::failure(QStringLiteral("the two passwords differ"));
    return again;
}

Result<QString> PasswordSource::fromFile() const
{
    QString line;
    if (m_file == QLatin1String("-")) {
        Terminal::readLine(&line);
    } else {
        QFile file(m_file);
        if (!file.open(QIODevice::ReadOnly)) {
            return Outcome::failure(QStringLiteral("the password file %1 cannot be read: %2")
                                        .arg(m_file, file.errorString()));
        }
        line = QString::fromUtf8(file.readLine(4096));
        while (line.endsWith(QLatin1Char('\n')) || line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    }
    if (line.isEmpty())
        return Outcome::failure(QStringLiteral("the password file holds no password"));
    return line;
}

Result<QString> PasswordSource::asked(const QString &question) const
{
    QString answer;
    if (!Terminal::isInteractive()) {
        return Outcome::failure(QStringLiteral(
            "a password is needed and there is no terminal to ask; give --password-file"));
    }
    if (!Terminal::ask(question, true, &answer))
        return Outcome::failure(QStringLiteral("no password was given"));
    return answer;
}

} // namespace KODMS::Console
