// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/HelpText.h"

#include "apps/admin/CommandSet.h"

namespace KODMS::Admin {

/// Two columns; the right one is wrapped at 100 characters.
static QString row(const QString &left, const QString &right)
{
    constexpr int Indent = 26;
    constexpr int Width = 100;
    QString text = QStringLiteral("  ") + left.leftJustified(Indent - 3) + QLatin1Char(' ');
    if (text.size() > Indent)
        text += QLatin1Char('\n') + QString(Indent, QLatin1Char(' '));
    int column = Indent;
    const QStringList words = right.split(QLatin1Char(' '));
    for (const QString &word : words) {
        if (column + word.size() > Width) {
            text = text.trimmed().isEmpty() ? text : text.left(text.size() - 1);
            text += QLatin1Char('\n') + QString(Indent, QLatin1Char(' '));
            column = Indent;
        }
        text += word + QLatin1Char(' ');
        column += static_cast<int>(word.size()) + 1;
    }
    text.chop(1);
    return text + QLatin1Char('\n');
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

QString HelpText::ofCommand(const Command &command, const QList<QCommandLineOption> &options)
{
    QString text = QStringLiteral("Usage: kodms-admin ") + command.name();
    const QList<Command::Argument> arguments = command.arguments();
    for (const Command::Argument &argument : arguments)
        text += QLatin1Char(' ') + argument.name;
    text += QStringLiteral(" [options]\n\n") + command.summary() + QLatin1Char('\n');
    if (!command.details().isEmpty())
        text += QLatin1Char('\n') + command.details() + QLatin1Char('\n');
    if (!arguments.isEmpty()) {
        text += QStringLiteral("\nArguments:\n");
        for (const Command::Argument &argument : arguments)
            text += row(argument.name, argument.description);
    }
    if (!command.options().isEmpty())
        text += QStringLiteral("\nOptions:\n") + optionRows(command.options());
    return text + QStringLiteral("\nOptions of every command:\n") + optionRows(options);
}

} // namespace KODMS::Admin
