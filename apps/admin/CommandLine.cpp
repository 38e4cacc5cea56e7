// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/CommandLine.h"

#include "apps/admin/CommandSet.h"

namespace KODMS::Admin {

/// The place of the command's first word, or the end of the list.
static int commandPlace(const QStringList &arguments)
{
    int place = 1;
    while (place < arguments.size() && arguments[place].startsWith(QLatin1Char('-')))
        place += arguments[place] == QLatin1String("--config") ? 2 : 1;
    return qMin(place, static_cast<int>(arguments.size()));
}

CommandLine CommandLine::split(const QStringList &arguments, const CommandSet &commands)
{
    CommandLine line;
    line.remaining = arguments;
    const int place = commandPlace(arguments);
    if (place == arguments.size())
        return line;
    const QString first = line.remaining.takeAt(place);
    if (!commands.isGroup(first)) {
        line.command = first;
    } else {
        const QString second = place < line.remaining.size() ? line.remaining[place] : QString();
        line.command = first + QLatin1Char(' ') + second;
        if (commands.find(line.command))
            line.remaining.removeAt(place);
        else if (second.isEmpty() || second.startsWith(QLatin1Char('-')))
            line.command = line.group = first;
    }
    if (!commands.find(line.command))
        line.error = QStringLiteral("there is no command \"%1\"").arg(line.command.trimmed());
    return line;
}

} // namespace KODMS::Admin
