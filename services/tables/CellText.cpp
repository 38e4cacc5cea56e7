// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tables/CellText.h"

#include <QRegularExpression>

namespace KODMS::Services {

namespace {

/// In UTF-16 units, as the programs that read it count.
constexpr int LongestSheetCell = 32767;

bool isLineOrTab(QChar c)
{
    return c == QLatin1Char('\t') || c == QLatin1Char('\n') || c == QLatin1Char('\r');
}

bool isWholePair(const QString &text, int at)
{
    return text.at(at).isHighSurrogate() && at + 1 < text.size() &&
           text.at(at + 1).isLowSurrogate();
}

bool isUnfit(QChar c)
{
    constexpr ushort firstOfNone = 0xfffe;
    const bool isControl = c.unicode() < 0x20 || (c.unicode() >= 0x7f && c.unicode() < 0xa0);
    return (isControl && !isLineOrTab(c)) || c.isSurrogate() || c.unicode() >= firstOfNone;
}

/// As the usual spreadsheets read the beginning of a field.
bool looksLikeFormula(const QString &text)
{
    static const QString starts = QStringLiteral("=+-@\t\r\n\uff1d\uff0b\uff0d\uff20");
    return !text.isEmpty() && starts.contains(text.at(0));
}

} // namespace

QString cleanCell(const QString &text)
{
    QString clean = text;
    for (int i = 0; i < clean.size(); ++i) {
        if (isWholePair(clean, i))
            ++i;
        else if (isUnfit(clean.at(i)))
            clean[i] = QChar(QChar::ReplacementCharacter);
    }
    return clean;
}

QString csvField(const QString &text)
{
    QString field = cleanCell(text);
    if (looksLikeFormula(field))
        field.prepend(QLatin1Char('\''));
    static const QRegularExpression needsQuotes(QStringLiteral("[\",\r\n]"));
    if (!field.contains(needsQuotes))
        return field;
    field.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + field + QLatin1Char('"');
}

QString sheetCell(const QString &text, bool *isCut)
{
    QString cell = cleanCell(text);
    cell.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    cell.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    *isCut = cell.size() > LongestSheetCell;
    if (*isCut) {
        const bool splitsPair = cell.at(LongestSheetCell - 1).isHighSurrogate();
        cell.truncate(splitsPair ? LongestSheetCell - 1 : LongestSheetCell);
    }
    static const QRegularExpression escaped(QStringLiteral("_(?=x[0-9A-Fa-f]{4}_)"));
    return cell.replace(escaped, QStringLiteral("_x005F_"));
}

} // namespace KODMS::Services
