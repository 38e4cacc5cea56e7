// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/Options.h"

#include <QCommandLineParser>

namespace KODMS::Host {

namespace {

struct Declared {
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")},
                            QStringLiteral("Show this help.")};
    QCommandLineOption version{QStringLiteral("version"), QStringLiteral("Show the version.")};
    QCommandLineOption config{QStringLiteral("config"),
                              QStringLiteral("Use this configuration file."),
                              QStringLiteral("FILE")};
    QCommandLineOption lang{QStringLiteral("lang"),
                            QStringLiteral("Language of the host's windows: zh or en."),
                            QStringLiteral("LANG")};
    QCommandLineOption screenshots{QStringLiteral("screenshots"),
                                   QStringLiteral("Render the windows of a sample installation "
                                                  "into this folder, and leave."),
                                   QStringLiteral("DIR")};
    QCommandLineOption scale{QStringLiteral("scale"),
                             QStringLiteral("Scale of the screenshots, 1 to 4."),
                             QStringLiteral("FACTOR")};
    QCommandLineOption exitAfterShow{
        QStringLiteral("exit-after-show"),
        QStringLiteral("Print the milliseconds from the start of the process to the usable "
                       "sign-in window, and leave.")};

    QList<QCommandLineOption> all() const
    {
        return {help, version, config, lang, screenshots, scale, exitAfterShow};
    }
};

void setUp(QCommandLineParser &parser, const Declared &declared)
{
    parser.setApplicationDescription(
        QStringLiteral("The KODMS desks: job management of a PCB CAM factory."));
    parser.addOptions(declared.all());
}

QString checked(const Options &options, const QStringList &positional, bool scaleIsNumber)
{
    if (!positional.isEmpty())
        return QStringLiteral("unexpected argument: ") + positional.first();
    if (!options.language.isEmpty() && options.language != QLatin1String("zh") &&
        options.language != QLatin1String("en"))
        return QStringLiteral("--lang takes zh or en, not ") + options.language;
    if (!scaleIsNumber || (options.scale != 0 && (options.scale < 1 || options.scale > 4)))
        return QStringLiteral("--scale takes a number from 1 to 4");
    return {};
}

} // namespace

Options Options::parse(const QStringList &arguments)
{
    const Declared declared;
    QCommandLineParser parser;
    setUp(parser, declared);
    Options options;
    if (!parser.parse(arguments)) {
        options.error = parser.errorText();
        return options;
    }
    options.showHelp = parser.isSet(declared.help);
    options.showVersion = parser.isSet(declared.version);
    options.configPath = parser.value(declared.config);
    options.language = parser.value(declared.lang);
    options.screenshotsDir = parser.value(declared.screenshots);
    options.exitAfterShow = parser.isSet(declared.exitAfterShow);
    bool isNumber = true;
    if (parser.isSet(declared.scale)) {
        options.scale = parser.value(declared.scale).toDouble(&isNumber);
        isNumber = isNumber && options.scale >= 1;
    }
    options.error = checked(options, parser.positionalArguments(), isNumber);
    return options;
}

QString Options::helpText()
{
    const Declared declared;
    QCommandLineParser parser;
    setUp(parser, declared);
    return parser.helpText();
}

} // namespace KODMS::Host
