// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/Options.h"
#include "tests/support/TestMain.h"

#include <QTest>

using KODMS::Host::Options;

class OptionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingAsked();
    void everythingAsked();
    void refused_data();
    void refused();
    void helpNamesEveryOption();
};

namespace {

Options parse(const QStringList &arguments)
{
    return Options::parse(QStringList{QStringLiteral("kodms-desk")} + arguments);
}

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

void OptionsTest::nothingAsked()
{
    const Options options = parse({});
    QVERIFY(options.error.isEmpty());
    QVERIFY(options.configPath.isEmpty() && options.language.isEmpty());
    QVERIFY(!options.exitAfterShow && !options.showHelp && !options.showVersion);
    QCOMPARE(options.scale, 0.0);
}

void OptionsTest::everythingAsked()
{
    const Options options =
        parse(words("--config a.ini --lang en --screenshots out --scale 1.5 --exit-after-show"));
    QVERIFY2(options.error.isEmpty(), qPrintable(options.error));
    QCOMPARE(options.configPath, QStringLiteral("a.ini"));
    QCOMPARE(options.language, QStringLiteral("en"));
    QCOMPARE(options.screenshotsDir, QStringLiteral("out"));
    QCOMPARE(options.scale, 1.5);
    QVERIFY(options.exitAfterShow);
}

void OptionsTest::refused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("an unknown option") << words("--no-such");
    QTest::newRow("a stray word") << words("job");
    QTest::newRow("a language that is not there") << words("--lang fr");
    QTest::newRow("scale as a word") << words("--scale large");
    QTest::newRow("scale not a number") << words("--scale nan");
    QTest::newRow("scale zero") << words("--scale 0");
    QTest::newRow("scale below one") << words("--scale 0.5");
    QTest::newRow("scale beyond reason") << words("--scale 40");
    QTest::newRow("an option without its value") << words("--config");
}

void OptionsTest::refused()
{
    QFETCH(QStringList, arguments);
    QVERIFY(!parse(arguments).error.isEmpty());
}

void OptionsTest::helpNamesEveryOption()
{
    const QString help = Options::helpText();
    for (const char *option : {"--config", "--lang", "--screenshots", "--scale",
                               "--exit-after-show", "--version", "--help"})
        QVERIFY2(help.contains(QLatin1String(option)), option);
}

KODMS_TEST_MAIN(OptionsTest, QCoreApplication)
#include "OptionsTest.moc"
