// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/admin/AdminSandbox.h"
#include "tests/support/TestMain.h"

#include <QFileInfo>
#include <QTest>

using KODMS::Tests::AdminRun;
using KODMS::Tests::AdminSandbox;

/// What is typed wrong, and where help is found. Nothing here may touch an installation.
class TestAdminCommandLine : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void helpNamesEveryCommand();
    void everyCommandHasHelp_data();
    void everyCommandHasHelp();
    void aGroupHasHelp_data();
    void aGroupHasHelp();
    void saysItsVersion();
    void refusesAWrongLine_data();
    void refusesAWrongLine();
    void anOptionNeedsItsValue();
    void theToolsOptionsMayStandFirst();
    void aFileNameMayBeginWithADash();
    void cleanup();

private:
    AdminSandbox m_sandbox;
};

static const char *const AllCommands[] = {"init",        "status",    "user add",     "user list",
                                          "user passwd", "user role", "user disable", "user enable",
                                          "order pay",   "intake",    "check",        "backup",
                                          "restore",     "sample",    "demo"};

void TestAdminCommandLine::helpNamesEveryCommand()
{
    const AdminRun run = m_sandbox.run({QStringLiteral("--help")});
    QCOMPARE(run.code, 0);
    QCOMPARE(run.errors, QByteArray());
    for (const char *command : AllCommands)
        QVERIFY2(run.output.contains(QByteArray("\n  ") + command + ' '), command);
}

void TestAdminCommandLine::everyCommandHasHelp_data()
{
    QTest::addColumn<QString>("command");
    for (const char *command : AllCommands)
        QTest::newRow(command) << QString::fromLatin1(command);
}

void TestAdminCommandLine::everyCommandHasHelp()
{
    QFETCH(QString, command);
    const AdminRun run =
        m_sandbox.run(command.split(QLatin1Char(' ')) + QStringList{QStringLiteral("--help")});
    QVERIFY2(run.code == 0, run.all());
    QVERIFY2(run.output.startsWith("Usage: kodms-admin " + command.toUtf8()), run.all());
    const bool hasOwnPlaces = command == QLatin1String("demo") || command == QLatin1String("copy");
    QVERIFY2(run.output.contains("--config INI") != hasOwnPlaces, run.all());
    const QList<QByteArray> lines = run.output.split('\n');
    for (const QByteArray &line : lines)
        QVERIFY2(line.size() <= 100 && !line.endsWith(' '), line);
}

void TestAdminCommandLine::aGroupHasHelp_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("in full") << QStringLiteral("user --help");
    QTest::newRow("in short") << QStringLiteral("user -h");
    QTest::newRow("asked for first") << QStringLiteral("--help user");
}

void TestAdminCommandLine::aGroupHasHelp()
{
    QFETCH(QString, line);
    const AdminRun run = m_sandbox.run(line.split(QLatin1Char(' ')));
    QVERIFY2(run.code == 0, run.all());
    for (const char *command : {"user add ", "user list ", "user disable "})
        QVERIFY2(run.output.contains(QByteArray("\n  ") + command), run.all());
    QVERIFY2(!run.output.contains("backup"), run.all());
}

void TestAdminCommandLine::saysItsVersion()
{
    const AdminRun run = m_sandbox.run({QStringLiteral("--version")});
    QCOMPARE(run.code, 0);
    QVERIFY2(run.output.startsWith("kodms-admin "), run.all());
}

void TestAdminCommandLine::refusesAWrongLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("named");
    const auto row = [](const char *name, const char *line, const char *named) {
        QTest::newRow(name) << QString::fromLatin1(line) << QString::fromLatin1(named);
    };
    row("nothing", "", "a command is needed");
    row("an unknown command", "polish", "polish");
    row("a group without its command", "user", "user");
    row("an unknown command of a group", "user promote", "user promote");
    row("help for an unknown command of a group", "user promote --help", "user promote");
    row("a configuration without a name", "--config= status", "--config");
    row("an unknown option", "status --fast", "fast");
    row("an argument too many", "status now", "now");
    row("a missing argument", "user disable", "LOGIN");
    row("no customer for an intake", "intake board.tgz", "--customer");
    row("a negative number of flows", "sample --flows -5", "flows");
    row("too many flows", "sample --flows 3000001", "3000000");
    row("too many flows with files", "sample --flows 1001 --files", "1000");
    row("a number of flows in words", "demo place --flows many", "many");
    row("a seed that is none", "sample --flows 5 --seed x", "seed");
    row("an option of another command", "status --grant admin", "grant");
    row("an option before the command", "--grant admin user role", "admin");
}

void TestAdminCommandLine::refusesAWrongLine()
{
    QFETCH(QString, line);
    QFETCH(QString, named);
    const QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const AdminRun plain = m_sandbox.run(words);
    QVERIFY2(plain.code == 2, plain.all());
    QCOMPARE(plain.output, QByteArray());
    QVERIFY2(plain.errors.contains(named.toUtf8()), plain.all());

    const AdminRun json = m_sandbox.runJson(words);
    QVERIFY2(json.code == 2, json.all());
    QCOMPARE(json.json()[QStringLiteral("ok")], QJsonValue(false));
    QCOMPARE(json.json()[QStringLiteral("exitCode")], QJsonValue(2));
    QVERIFY2(json.json()[QStringLiteral("error")].toString().contains(named), json.all());
}

void TestAdminCommandLine::anOptionNeedsItsValue()
{
    const AdminRun run = m_sandbox.run({QStringLiteral("status"), QStringLiteral("--config")});
    QVERIFY2(run.code == 2 && run.errors.contains("config"), run.all());
}

void TestAdminCommandLine::theToolsOptionsMayStandFirst()
{
    const QString config = m_sandbox.path(QStringLiteral("elsewhere/kodms.ini"));
    const AdminRun run = m_sandbox.run(
        {QStringLiteral("--config"), config, QStringLiteral("--json"), QStringLiteral("status")});
    QVERIFY2(run.code == 1, run.all()); // there is no installation
    QCOMPARE(run.json()[QStringLiteral("command")].toString(), QStringLiteral("status"));
    QVERIFY2(run.json()[QStringLiteral("error")].toString().contains(config), run.all());
}

void TestAdminCommandLine::aFileNameMayBeginWithADash()
{
    const AdminRun run = m_sandbox.run({QStringLiteral("user"), QStringLiteral("disable"),
                                        QStringLiteral("--"), QStringLiteral("-x")});
    QVERIFY2(run.code == 1, run.all()); // understood; there is no installation
}

void TestAdminCommandLine::cleanup()
{
    QVERIFY(!QFileInfo::exists(m_sandbox.path(QStringLiteral("home"))));
    QVERIFY(!QFileInfo::exists(m_sandbox.path(QStringLiteral("place"))));
}

KODMS_TEST_MAIN(TestAdminCommandLine, QCoreApplication)
#include "TestAdminCommandLine.moc"
