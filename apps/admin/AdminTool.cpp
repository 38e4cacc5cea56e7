// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/AdminTool.h"

#include "apps/admin/CommandLine.h"
#include "apps/admin/HelpText.h"
#include "apps/console/Interrupt.h"
#include "apps/console/Terminal.h"

#include <QLoggingCategory>

namespace KODMS::Admin {

using Console::Terminal;

QList<QCommandLineOption> AdminTool::toolOptions()
{
    return {
        {QStringLiteral("config"),
         QStringLiteral("The installation's configuration file (else $KODMS_CONFIG, else the one "
                        "in the user's configuration folder)."),
         QStringLiteral("INI")},
        {QStringLiteral("json"),
         QStringLiteral("Write the result to standard output as one JSON object.")},
        {QStringLiteral("verbose"), QStringLiteral("Show the log on standard error.")},
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this text.")},
        {QStringLiteral("version"), QStringLiteral("Show the version.")},
    };
}

int AdminTool::run(const QStringList &arguments)
{
    const bool asJson = arguments.contains(QStringLiteral("--json"));
    const bool wantsHelp =
        arguments.contains(QStringLiteral("--help")) || arguments.contains(QStringLiteral("-h"));
    const CommandLine line = CommandLine::split(arguments, m_commands);
    if (!line.group.isEmpty() && wantsHelp) {
        Terminal::writeOutput(HelpText::ofGroup(m_commands, line.group).toLocal8Bit());
        return 0;
    }
    if (!line.error.isEmpty())
        return write(line.command, Report::usage(line.error), asJson);
    if (!line.command.isEmpty()) {
        Command &command = *m_commands.find(line.command);
        return write(line.command, runCommand(command, line.remaining), asJson);
    }
    if (arguments.contains(QStringLiteral("--version"))) {
        Terminal::writeOutput("kodms-admin " KODMS_VERSION "\n");
        return 0;
    }
    if (wantsHelp) {
        Terminal::writeOutput(HelpText::ofTool(m_commands, toolOptions()).toLocal8Bit());
        return 0;
    }
    return write(QString(), Report::usage(QStringLiteral("a command is needed")), asJson);
}

Report AdminTool::runCommand(Command &command, const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOptions(toolOptions());
    parser.addOptions(command.options());
    if (!parser.parse(arguments))
        return Report::usage(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        return Report::success(
            HelpText::ofCommand(command, toolOptions()).trimmed().split(QLatin1Char('\n')));
    const Invocation invocation(parser);
    // An empty variable of a script must not open another installation.
    if (invocation.has(QStringLiteral("config")) && invocation.configPath().isEmpty())
        return Report::usage(QStringLiteral("--config names no file"));
    if (invocation.has(QStringLiteral("config")) && !command.configFault().isEmpty())
        return Report::usage(command.configFault());
    QString fault = argumentFault(command, parser.positionalArguments());
    if (fault.isEmpty())
        fault = command.fault(invocation);
    if (!fault.isEmpty())
        return Report::usage(fault);
    if (!parser.isSet(QStringLiteral("verbose")))
        QLoggingCategory::setFilterRules(QStringLiteral("kodms.*=false"));
    return command.run(invocation);
}

QString AdminTool::argumentFault(const Command &command, const QStringList &given)
{
    const QList<Command::Argument> wanted = command.arguments();
    if (given.size() < wanted.size())
        return QStringLiteral("%1 is missing").arg(wanted[given.size()].name);
    if (given.size() > wanted.size())
        return QStringLiteral("\"%1\" is one argument too many").arg(given[wanted.size()]);
    return {};
}

int AdminTool::write(const QString &command, const Report &report, bool asJson) const
{
    if (!report.error.isEmpty()) {
        const QString who =
            command.isEmpty() ? QString() : command.trimmed() + QStringLiteral(": ");
        Terminal::writeError(QStringLiteral("kodms-admin: ") + who +
                             Terminal::printable(report.error));
        if (report.code == ExitCode::Usage)
            Terminal::writeError(QStringLiteral("kodms-admin --help shows what there is"));
    }
    if (asJson) {
        Terminal::writeOutput(report.toJson(command));
    } else {
        for (const QString &line : report.lines)
            Terminal::writeOutput(Terminal::printable(line).toLocal8Bit() + '\n');
    }
    return static_cast<int>(report.code);
}

} // namespace KODMS::Admin
