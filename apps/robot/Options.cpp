// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/Options.h"

#include <QCommandLineParser>
#include <QRandomGenerator>

#include <cmath>
#include <limits>

namespace KODMS::Robot {

using Services::Outcome;
using Services::Result;

namespace {

QString name(const char *option)
{
    return QString::fromLatin1(option);
}

QCommandLineOption option(const char *names, const char *description, const char *value = "",
                          const char *standard = "")
{
    return {QString::fromLatin1(names).split(QLatin1Char(' ')), QString::fromLatin1(description),
            QString::fromLatin1(value), QString::fromLatin1(standard)};
}

void describe(QCommandLineParser &parser)
{
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.setApplicationDescription(QStringLiteral(
        "A stand-in for the CAM robot: takes the jobs that the desks send, and after a while\n"
        "delivers a small result. Listens on this machine only; the first line of its output\n"
        "says where. Ctrl-C or the termination signal ends it; what it had at hand is taken up\n"
        "by its next start."));
    parser.addOptions(
        {option("config",
                "The installation's configuration file (else $KODMS_CONFIG, else the "
                "one in the user's configuration folder).",
                "INI"),
         option("login", "The robot's account; it needs the role robot (else \"robot\").", "LOGIN",
                "robot"),
         option("password-file",
                "Read the password from the first line of FILE (-: standard "
                "input) instead of asking for it.",
                "FILE"),
         option("port", "Listen on this port (0: any free one) instead of the configuration's.",
                "NUMBER"),
         option("seconds", "How long a job takes (else 3).", "S", "3"),
         option("fail-rate", "The share of the jobs that it fails on, 0 to 1 (else 0).", "P", "0"),
         option("seed", "Which jobs these are: the same number, the same choice (else random).",
                "NUMBER"),
         option("silent", "Work, and never answer a request."),
         option("slow", "Answer late, byte by byte."),
         option("verbose", "Show the log of the services on standard error."),
         option("h help", "Show this text."), option("version", "Show the version.")});
}

Result<double> numberOf(const QCommandLineParser &parser, const char *option, double most)
{
    bool valid = false;
    const double number = parser.value(name(option)).toDouble(&valid);
    if (valid && std::isfinite(number) && number >= 0 && number <= most)
        return number;
    return Outcome::failure(QStringLiteral("--%1 \"%2\": a number from 0 to %3 is needed")
                                .arg(name(option), parser.value(name(option)))
                                .arg(most, 0, 'f', 0));
}

Result<quint32> wholeNumberOf(const QCommandLineParser &parser, const char *option, quint32 most)
{
    bool valid = false;
    const quint32 number = parser.value(name(option)).toUInt(&valid);
    if (valid && number <= most)
        return number;
    return Outcome::failure(QStringLiteral("--%1 \"%2\": a whole number from 0 to %3 is needed")
                                .arg(name(option), parser.value(name(option)))
                                .arg(most));
}

Outcome readWork(const QCommandLineParser &parser, WorkManner &work)
{
    constexpr double dayInSeconds = 86400;
    const auto seconds = numberOf(parser, "seconds", dayInSeconds);
    if (!seconds)
        return seconds.outcome;
    const auto failRate = numberOf(parser, "fail-rate", 1);
    if (!failRate)
        return failRate.outcome;
    work.workMs = static_cast<int>(std::lround(seconds.value * 1000));
    work.failRate = failRate.value;
    work.seed = QRandomGenerator::global()->generate();
    if (!parser.isSet(name("seed")))
        return Outcome::success();
    const auto seed = wholeNumberOf(parser, "seed", std::numeric_limits<quint32>::max());
    work.seed = seed.value;
    return seed.outcome;
}

Outcome readServer(const QCommandLineParser &parser, Options &options)
{
    if (parser.isSet(name("silent")) && parser.isSet(name("slow")))
        return Outcome::failure(QStringLiteral("--silent and --slow exclude each other"));
    if (parser.isSet(name("silent")))
        options.manner = ConnectionRules::Manner::Silent;
    if (parser.isSet(name("slow")))
        options.manner = ConnectionRules::Manner::Slow;
    if (!parser.isSet(name("port")))
        return Outcome::success();
    const auto port = wholeNumberOf(parser, "port", std::numeric_limits<quint16>::max());
    options.port = static_cast<quint16>(port.value);
    return port.outcome;
}

/// An empty variable of a script must not open another installation, or sign in as somebody else.
Outcome checkGiven(const QCommandLineParser &parser)
{
    for (const char *option : {"config", "login", "password-file"}) {
        if (parser.isSet(name(option)) && parser.value(name(option)).isEmpty())
            return Outcome::failure(QStringLiteral("--%1 names nothing").arg(name(option)));
    }
    if (!parser.positionalArguments().isEmpty())
        return Outcome::failure(QStringLiteral("\"%1\" is one argument too many")
                                    .arg(parser.positionalArguments().first()));
    return Outcome::success();
}

} // namespace

Result<Options> Options::read(const QStringList &arguments)
{
    QCommandLineParser parser;
    describe(parser);
    if (!parser.parse(arguments))
        return Outcome::failure(parser.errorText());
    Options options;
    if (parser.isSet(name("help")))
        options.text = parser.helpText();
    else if (parser.isSet(name("version")))
        options.text = QStringLiteral("kodms-robot " KODMS_VERSION "\n");
    if (!options.text.isEmpty())
        return options;
    for (const Outcome &read :
         {checkGiven(parser), readWork(parser, options.work), readServer(parser, options)}) {
        if (!read)
            return read;
    }
    options.configPath = parser.value(name("config"));
    options.login = parser.value(name("login"));
    options.passwordFile = parser.value(name("password-file"));
    options.isVerbose = parser.isSet(name("verbose"));
    return options;
}

} // namespace KODMS::Robot
