// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/LatinFold.h"

#include <algorithm>

namespace KODMS::Services {

namespace {

bool isLatinLetter(QChar c)
{
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
           (c >= QLatin1Char('A') && c <= QLatin1Char('Z'));
}

} // namespace

bool hasLatinLetter(const QString &text)
{
    return std::any_of(text.begin(), text.end(), isLatinLetter);
}

QString foldedLatin(QString text)
{
    for (QChar &c : text) {
        if (isLatinLetter(c))
            c = c.toLower();
    }
    return text;
}

} // namespace KODMS::Services
