// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/RobotLog.h"

#include "apps/console/Terminal.h"

#include <QDateTime>

namespace KODMS::Robot {

namespace {

bool isHarmless(uint letter)
{
    return letter != '"' && letter != '\\' && QChar::isPrint(letter) &&
           (letter == ' ' || !QChar::isSpace(letter));
}

} // namespace

void RobotLog::write(const QString &line)
{
    const QString now = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
    Console::Terminal::writeError(now + QLatin1Char(' ') + line);
}

QString RobotLog::quoted(const QString &name)
{
    constexpr int longest = 60;
    QString text;
    const QVector<uint> letters = name.left(longest).toUcs4();
    for (const uint letter : letters) {
        if (isHarmless(letter))
            text += QString::fromUcs4(&letter, 1);
        else
            text += QStringLiteral("\\u{%1}").arg(letter, 0, 16);
    }
    const QString rest = name.size() > longest ? QStringLiteral("...") : QString();
    return QLatin1Char('"') + text + rest + QLatin1Char('"');
}

} // namespace KODMS::Robot
