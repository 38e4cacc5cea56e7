// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/console/Terminal.h"

namespace KODMS::Console {

QString Terminal::printable(const QString &text)
{
    QString line = text;
    for (QChar &character : line) {
        if (character.category() == QChar::Other_Control)
            character = QLatin1Char('?');
    }
    return line;
}

} // namespace KODMS::Console
