// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestMain.h"

#include "tests/support/TestDatabase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>
#include <QXmlStreamReader>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace KODMS::Tests {

namespace {

/// How the offscreen platform begins to say what it cannot do for a window: bound its
/// size, raise it, give it the keyboard.
constexpr char OffscreenLimit[] = "This plugin does not support ";

/// What CTest takes for a test that could not be run.
constexpr int Skipped = 77;

/// A number of failures that is never taken for it.
int exitCode(int failures)
{
    return std::min(failures, Skipped - 1);
}

/// The test library logs an announced message nowhere, so whatever warning stands
/// in the log was not announced.
QStringList unexpectedWarnings(const QString &xmlLog)
{
    QFile file(xmlLog);
    if (!file.open(QIODevice::ReadOnly))
        return {QStringLiteral("the test log cannot be read")};
    QStringList found;
    QXmlStreamReader xml(&file);
    bool inWarning = false;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == QLatin1String("Message")) {
            const auto type = xml.attributes().value(QLatin1String("type"));
            inWarning = type == QLatin1String("qwarn") || type == QLatin1String("system");
        } else if (xml.isStartElement() && xml.name() == QLatin1String("Description") &&
                   inWarning) {
            const QString text = xml.readElementText();
            if (!text.startsWith(QLatin1String(OffscreenLimit)))
                found << text;
            inWarning = false;
        }
    }
    return found;
}

bool hasOutputOption(const QStringList &arguments)
{
    return arguments.contains(QStringLiteral("-o")) ||
           arguments.contains(QStringLiteral("-functions"));
}

/// Standard output, or a file for whoever would not see it.
QString textOutput()
{
    return qEnvironmentVariable("KODMS_TEST_OUTPUT", QStringLiteral("-"));
}

} // namespace

void prepareEnvironment()
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8")); // as the programs do
    QString why;
    if (TestDatabase::isEngineThere(&why))
        return;
    std::printf("SKIP   : %s\n", qPrintable(why));
    std::exit(Skipped);
}

int runTests(QObject *testObject, const QStringList &arguments)
{
    if (hasOutputOption(arguments))
        return exitCode(QTest::qExec(testObject, arguments));
    const QTemporaryDir dir;
    const QString log = dir.filePath(QStringLiteral("log.xml"));
    QStringList all = arguments;
    all << QStringLiteral("-o") << log + QStringLiteral(",xml") << QStringLiteral("-o")
        << textOutput() + QStringLiteral(",txt");
    const int failed = QTest::qExec(testObject, all);
    const QStringList warnings = unexpectedWarnings(log);
    for (const QString &warning : warnings)
        std::fprintf(stderr, "FAIL!  : a warning that no test announced: %s\n",
                     qPrintable(warning));
    return exitCode(failed + static_cast<int>(warnings.size()));
}

} // namespace KODMS::Tests
