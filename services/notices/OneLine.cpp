// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/notices/OneLine.h"

#include <algorithm>

namespace KODMS::Services {

namespace {

/// Or turns the rest of it round, so that it reads as something else.
bool endsLine(QChar character)
{
    constexpr ushort toTheRight = 0x202d;
    constexpr ushort toTheLeft = 0x202e;
    if (character.unicode() == toTheRight || character.unicode() == toTheLeft)
        return true;
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

} // namespace

bool isOneLine(const QString &text)
{
    return std::none_of(text.begin(), text.end(), endsLine);
}

QString oneLine(const QString &text)
{
    QString line = text;
    std::replace_if(line.begin(), line.end(), endsLine, QLatin1Char('?'));
    return line;
}

} // namespace KODMS::Services
