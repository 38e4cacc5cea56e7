// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QTextDocument>

#include <algorithm>

namespace KODMS::Host {

/// A tooltip that shows `text` letter by letter: tooltips read markup, and a
/// notice may quote what a customer or a file name says.
inline QString plainToolTip(const QString &text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    return QStringLiteral("<span>") + text.toHtmlEscaped() + QStringLiteral("</span>");
}

/// True for what ends a line, steers the cursor or turns the writing direction.
inline bool rearrangesText(QChar character)
{
    const ushort code = character.unicode();
    const bool turns = code == 0x061c || code == 0x200e || code == 0x200f ||
                       (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return turns;
    }
}

/// A customer's name or path as one line that looks like nothing but itself.
inline QString plainLine(QString text)
{
    std::replace_if(text.begin(), text.end(), rearrangesText, QLatin1Char('?'));
    return text;
}

} // namespace KODMS::Host
