// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/HelpText.h"

#include "apps/admin/CommandSet.h"

#include <algorithm>

namespace KODMS::Admin {

static constexpr int Width = 100;

/// Breaks `text`, which begins in column `column`, between words; further lines begin in
/// column `indent`.
static QString wrapped(const QString &text, int column, int indent)
{
    QString result;
    const QStringList words = text.split(QLatin1Char(' '));
    for (const QString &word : words) {
        const int length = static_cast<int>(word.size());
        if (result.isEmpty()) {
            result = word;
        } else if (column + 1 + length <= Width) {
            result += QLatin1Char(' ') + word;
            ++column;
        } else {
            result += QLatin1Char('\n') + QString(indent, QLatin1Char(' ')) + word;
            column = indent;
        }
        column += length;
    }
    return result;
}

/// Two columns; a name that is too long has a line to itself.
static QString row(const QString &left, const QString &right)
{
    constexpr int Indent = 26;
    QString text = QStringLiteral("  ") + left;
    if (text.size() < Indent - 1)
        text = text.leftJustified(Indent);
    else
        text += QLatin1Char('\n') + QString(Indent, QLatin1Char(' '));
    return text + wrapped(right, Indent, Indent) + QLatin1Char('\n');
}

/// Sentences, each line of `text` on lines of its own.
static QString paragraph(const QString &text)
{
    QString result;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines)
        result += wrapped(line, 0, 0) + QLatin1Char('\n');
    return result;
}

static QString optionRows(const QList<QCommandLineOption> &options)
{
    QString text;
    for (const QCommandLineOption &option : options) {
        QStringList names;
        const QStringList plain = option.names();
        for (const QString &name : plain)
            names << QString(name.size() > 1 ? 2 : 1, QLatin1Char('-')) + name;
        QString left = names.join(QStringLiteral(", "));
        if (!option.valueName().isEmpty())
            left += QLatin1Char(' ') + option.valueName();
        text += row(left, option.description());
    }
    return text;
}

QString HelpText::ofTool(const CommandSet &commands, const QList<QCommandLineOption> &options)
{
    QString text = QStringLiteral("Usage: kodms-admin [options] COMMAND ...\n\n"
                                  "Sets up and looks after an installation of the job desks.\n\n"
                                  "Commands (kodms-admin COMMAND --help says more):\n");
    for (const auto &command : commands.all())
        text += row(command->name(), command->summary());
    text += QStringLiteral("\nOptions:\n") + optionRows(options);
    text += QStringLiteral("\nExit codes:\n");
    text += row(QStringLiteral("0"), QStringLiteral("done"));
    text += row(QStringLiteral("1"), QStringLiteral("failed; the reason is on standard error"));
    text += row(QStringLiteral("2"), QStringLiteral("the command line was wrong"));
    text += row(QStringLiteral("3"), QStringLiteral("check found something"));
    text += row(QStringLiteral("130"), QStringLiteral("cancelled"));
    return text;
}

QString HelpText::ofGroup(const CommandSet &commands, const QString &group)
{
    QString text = QStringLiteral("Usage: kodms-admin %1 COMMAND ...\n\n"
                                  "Commands (kodms-admin %1 COMMAND --help says more):\n")
                       .arg(group);
    for (const auto &command : commands.all()) {
        if (command->name().startsWith(group + QLatin1Char(' ')))
            text += row(command->name(), command->summary());
    }
    return text;
}

QString HelpText::ofCommand(const Command &command, const QList<QCommandLineOption> &options)
{
    QString text = QStringLiteral("Usage: kodms-admin ") + command.name();
    const QList<Command::Argument> arguments = command.arguments();
    for (const Command::Argument &argument : arguments)
        text += QLatin1Char(' ') + argument.name;
    text += QStringLiteral(" [options]\n\n") + command.summary() + QLatin1Char('\n');
    if (!command.details().isEmpty())
        text += QLatin1Char('\n') + paragraph(command.details());
    if (!arguments.isEmpty()) {
        text += QStringLiteral("\nArguments:\n");
        for (const Command::Argument &argument : arguments)
            text += row(argument.name, argument.description);
    }
    if (!command.options().isEmpty())
        text += QStringLiteral("\nOptions:\n") + optionRows(command.options());
    QList<QCommandLineOption> common = options;
    if (!command.configFault().isEmpty())
        common.erase(std::remove_if(common.begin(), common.end(),
                                    [](const QCommandLineOption &option) {
                                        return option.names().contains(QStringLiteral("config"));
                                    }),
                     common.end());
    return text + QStringLiteral("\nOptions of every command:\n") + optionRows(common);
}

} // namespace KODMS::Admin
