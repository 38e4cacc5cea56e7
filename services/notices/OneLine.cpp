// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/notices/OneLine.h"

#include <algorithm>

namespace KODMS::Services {

namespace {

bool endsLine(QChar character)
{
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
