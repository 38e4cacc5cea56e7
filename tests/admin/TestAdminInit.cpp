// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/admin/AdminSandbox.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

using KODMS::Tests::AdminRun;
using KODMS::Tests::AdminSandbox;
using KODMS::Tests::TestDatabase;

/// Making an installation: what is asked, what is refused, what is left behind.
class TestAdminInit : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void takesThePasswordFromStandardInput();
    void takesThePasswordFromAFile();
    void asksOnTheTerminalWithoutShowingThePassword();
    void isCancelledAtAQuestion_data();
    void isCancelledAtAQuestion();
    void refusesTwoDifferentPasswords();
    void refusesAnUnusableAnswer_data();
    void refusesAnUnusableAnswer();
    void asksForNoPasswordInVain();
    void needsATerminalOrAPasswordFile();
    void leavesAnExistingInstallationAlone();
    void refusesAFolderItCannotWriteInto();
    void printsNothingSecret();
    void whatItMakesIsForItsOwnerOnly();
    void statusSaysWhatThereIs();
    void statusRefusesADamagedDatabase();
    void statusNamesABadSetting();
};

static QStringList initLine(const QString &passwordFile)
{
    return {QStringLiteral("init"),
            QStringLiteral("--login"),
            QStringLiteral("chief"),
            QStringLiteral("--name"),
            QStringLiteral("主管"),
            QStringLiteral("--password-file"),
            passwordFile};
}

void TestAdminInit::takesThePasswordFromStandardInput()
{
    const AdminSandbox sandbox;
    const AdminRun run = sandbox.runJson(initLine(QStringLiteral("-")), "a fine password\nrest\n");
    QVERIFY2(run.code == 0, run.all());
    QCOMPARE(run.json()[QStringLiteral("ok")], QJsonValue(true));
    QCOMPARE(run.json()[QStringLiteral("config")].toString(), sandbox.configPath());
    QVERIFY(QFileInfo::exists(sandbox.configPath()));
}

void TestAdminInit::takesThePasswordFromAFile()
{
    const AdminSandbox sandbox;
    const QString file = sandbox.write(QStringLiteral("secret"), "a fine password\r\n");
    QCOMPARE(sandbox.run(initLine(file)).code, 0);
    const AdminRun list = sandbox.run({QStringLiteral("user"), QStringLiteral("list")});
    QVERIFY2(list.output.contains("主管") && list.output.contains("admin"), list.all());
}

void TestAdminInit::asksOnTheTerminalWithoutShowingThePassword()
{
    if (!AdminSandbox::hasTerminals())
        QSKIP("a program is not interrupted, nor asked at a terminal, here");
    const AdminSandbox sandbox;
    QByteArray shown;
    const AdminRun run = sandbox.runOnTerminal(
        {QStringLiteral("init")}, "chief\n主管\na fine password\na fine password", &shown);
    QVERIFY2(run.code == 0, run.all());
    QVERIFY2(shown.contains("chief"), shown);
    QVERIFY2(!shown.contains("fine"), shown);
}

void TestAdminInit::isCancelledAtAQuestion_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("for the login") << QStringLiteral("init");
    QTest::newRow("for the name") << QStringLiteral("init --login chief");
    QTest::newRow("for the password") << QStringLiteral("init --login chief --name C");
}

void TestAdminInit::isCancelledAtAQuestion()
{
    if (!AdminSandbox::hasTerminals())
        QSKIP("a program is not interrupted, nor asked at a terminal, here");
    QFETCH(QString, line);
    const AdminSandbox sandbox;
    const AdminRun run = sandbox.interruptAtQuestion(line.split(QLatin1Char(' ')));
    QVERIFY2(run.code == 130, run.all());
    QVERIFY2(run.errors.contains("cancelled"), run.all());
    QVERIFY(!sandbox.hasInstallation());
}

void TestAdminInit::refusesTwoDifferentPasswords()
{
    if (!AdminSandbox::hasTerminals())
        QSKIP("a program is not interrupted, nor asked at a terminal, here");
    const AdminSandbox sandbox;
    QByteArray shown;
    const AdminRun run = sandbox.runOnTerminal(
        {QStringLiteral("init")}, "chief\n主管\na fine password\nanother password", &shown);
    QVERIFY2(run.code == 1, run.all());
    QVERIFY2(run.errors.contains("differ"), run.all());
    QVERIFY(!sandbox.hasInstallation());
}

void TestAdminInit::refusesAnUnusableAnswer_data()
{
    QTest::addColumn<QString>("login");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("password");
    const QString login = QStringLiteral("chief");
    const QString name = QStringLiteral("主管");
    const QByteArray password = "a fine password";
    QTest::newRow("a short password") << login << name << QByteArray("short");
    QTest::newRow("no password") << login << name << QByteArray();
    QTest::newRow("an empty login") << QString() << name << password;
    QTest::newRow("a login with a blank") << QStringLiteral("the chief") << name << password;
    QTest::newRow("a login that is SQL")
        << QStringLiteral("x'; DROP TABLE users; --") << name << password;
    QTest::newRow("an empty name") << login << QString() << password;
    QTest::newRow("a name too long") << login << QString(65, QChar(0x4E3B)) << password;
}

void TestAdminInit::refusesAnUnusableAnswer()
{
    QFETCH(QString, login);
    QFETCH(QString, name);
    QFETCH(QByteArray, password);
    const AdminSandbox sandbox;
    const AdminRun run = sandbox.runJson({QStringLiteral("init"), QStringLiteral("--login"), login,
                                          QStringLiteral("--name"), name,
                                          QStringLiteral("--password-file"), QStringLiteral("-")},
                                         password + '\n');
    QVERIFY2(run.code == 1, run.all());
    QVERIFY(!run.json()[QStringLiteral("error")].toString().isEmpty());
    QVERIFY(!sandbox.hasInstallation());
}

void TestAdminInit::asksForNoPasswordInVain()
{
    if (!AdminSandbox::hasTerminals())
        QSKIP("a program is not interrupted, nor asked at a terminal, here");
    const AdminSandbox sandbox;
    QByteArray shown;
    const AdminRun bad = sandbox.runOnTerminal({QStringLiteral("init")}, "the chief\n主管", &shown);
    QVERIFY2(bad.code == 1, bad.all());
    QVERIFY2(bad.errors.contains("the chief") && !bad.errors.contains("assword:"), bad.all());
    QVERIFY(!sandbox.hasInstallation());
    QCOMPARE(sandbox.init().code, 0);
    const AdminRun again = sandbox.runOnTerminal({QStringLiteral("init")}, "chief\nC", &shown);
    QVERIFY2(again.code == 1, again.all());
    QVERIFY2(again.errors.contains(sandbox.databaseName().toUtf8()) &&
                 !again.errors.contains("assword:"),
             again.all());
}

void TestAdminInit::needsATerminalOrAPasswordFile()
{
    const AdminSandbox sandbox;
    const AdminRun nothing = sandbox.run({QStringLiteral("init")});
    QVERIFY2(nothing.code == 2 && nothing.errors.contains("--login"), nothing.all());
    const AdminRun noPassword = sandbox.run(initLine(QString()).mid(0, 5), "typed blindly\n");
    QVERIFY2(noPassword.code == 1 && noPassword.errors.contains("--password-file"),
             noPassword.all());
    const AdminRun noFile = sandbox.run(initLine(sandbox.path(QStringLiteral("none"))));
    QVERIFY2(noFile.code == 1 && noFile.errors.contains("none"), noFile.all());
    QVERIFY(!sandbox.hasInstallation());
}

void TestAdminInit::leavesAnExistingInstallationAlone()
{
    const AdminSandbox sandbox;
    QVERIFY(sandbox.init().code == 0);
    const AdminRun again =
        sandbox.runJson({QStringLiteral("init"), QStringLiteral("--login"),
                         QStringLiteral("intruder"), QStringLiteral("--name"), QStringLiteral("x"),
                         QStringLiteral("--password-file"), QStringLiteral("-")},
                        "another fine password\n");
    QVERIFY2(again.code == 1, again.all());
    const AdminRun list = sandbox.run({QStringLiteral("user"), QStringLiteral("list")});
    QVERIFY2(list.output.contains("chief") && !list.output.contains("intruder"), list.all());
}

void TestAdminInit::refusesAFolderItCannotWriteInto()
{
    const AdminSandbox sandbox;
    if (TestDatabase::isServer()) { // whose configuration is there already; the files come next
        QVERIFY(!sandbox.write(QStringLiteral("place/files"), "a file in the way").isEmpty());
        const AdminRun run = sandbox.init();
        QVERIFY2(run.code == 1, run.all());
        QVERIFY2(run.errors.contains("place/files"), run.all());
        QVERIFY(!sandbox.hasInstallation());
        return;
    }
    QVERIFY(!sandbox.write(QStringLiteral("place"), "a file in the way").isEmpty());
    const AdminRun run = sandbox.init();
    QVERIFY2(run.code == 1, run.all());
    QVERIFY2(run.errors.contains("place"), run.all());
#if !defined(Q_OS_WIN) // where a folder's mark says nothing about who may write in it
    QVERIFY(QFile::remove(sandbox.path(QStringLiteral("place"))));
    QVERIFY(QDir().mkpath(sandbox.path(QStringLiteral("place"))));
    const auto readable = QFile::ReadOwner | QFile::ExeOwner;
    QVERIFY(QFile::setPermissions(sandbox.path(QStringLiteral("place")), readable));
    const AdminRun locked = sandbox.init();
    QVERIFY(
        QFile::setPermissions(sandbox.path(QStringLiteral("place")), readable | QFile::WriteOwner));
    QVERIFY2(locked.code == 1, locked.all());
    QVERIFY2(locked.errors.contains("place"), locked.all());
    QVERIFY(QDir(sandbox.path(QStringLiteral("place"))).isEmpty());
#endif
}

void TestAdminInit::printsNothingSecret()
{
    const AdminSandbox sandbox;
    const AdminRun run =
        sandbox.run(initLine(QStringLiteral("-")) + QStringList{QStringLiteral("--verbose")},
                    "a fine password\n");
    QVERIFY2(run.code == 0, run.all());
    QVERIFY2(!run.all().contains("fine"), run.all());
    QVERIFY2(!run.all().contains("argon2"), run.all());
}

void TestAdminInit::whatItMakesIsForItsOwnerOnly()
{
#if defined(Q_OS_WIN)
    QSKIP("new files have the rights of their folder here");
#endif
    const AdminSandbox sandbox;
    QCOMPARE(sandbox.init().code, 0);
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                        QFile::WriteOther | QFile::ExeOther;
    QStringList made{QStringLiteral("place/files")};
    if (!TestDatabase::isServer()) // there, the rest is of whoever prepared it
        made << QStringLiteral("place") << QStringLiteral("place/kodms.ini")
             << QStringLiteral("place/kodms.db");
    for (const QString &name : qAsConst(made)) {
        const QFileInfo file(sandbox.path(name));
        QVERIFY2(file.exists(), qPrintable(name));
        QVERIFY2(!(file.permissions() & others), qPrintable(name));
    }
}

void TestAdminInit::statusSaysWhatThereIs()
{
    const AdminSandbox sandbox;
    QVERIFY(sandbox.init().code == 0);
    const AdminRun run = sandbox.runJson({QStringLiteral("status")});
    QVERIFY2(run.code == 0, run.all());
    QCOMPARE(run.json()[QStringLiteral("config")].toString(), sandbox.configPath());
    QCOMPARE(run.json()[QStringLiteral("sample")], QJsonValue(false));
    QVERIFY(run.json()[QStringLiteral("schemaVersion")].toInt() >= 1);
    const QString database = run.json()[QStringLiteral("database")].toString();
    QVERIFY2(database.contains(sandbox.databaseName()), qPrintable(database));
    QVERIFY(!run.json()[QStringLiteral("fileStore")].toString().isEmpty());
    const QJsonObject index = run.json()[QStringLiteral("searchIndex")].toObject();
    QCOMPARE(index[QStringLiteral("ready")], QJsonValue(true));
    QCOMPARE(index[QStringLiteral("flows")], QJsonValue(0));
    QVERIFY(index[QStringLiteral("bytes")].toDouble() > 0);
}

void TestAdminInit::statusRefusesADamagedDatabase()
{
    const AdminSandbox sandbox;
    QVERIFY(sandbox.init().code == 0);
    sandbox.damage();
    const AdminRun run = sandbox.runJson({QStringLiteral("status")});
    QVERIFY2(run.code == 1, run.all());
    QVERIFY2(run.json()[QStringLiteral("error")].toString().contains(sandbox.databaseName()),
             run.all());
}

void TestAdminInit::statusNamesABadSetting()
{
    const AdminSandbox sandbox;
    QVERIFY(!sandbox.write(QStringLiteral("place/kodms.ini"), "[database]\ndriver = parrot\n")
                 .isEmpty());
    const AdminRun run = sandbox.runJson({QStringLiteral("status")});
    QVERIFY2(run.code == 1, run.all());
    const QString error = run.json()[QStringLiteral("error")].toString();
    for (const char *part : {"kodms.ini", "database", "driver", "parrot", "sqlite"})
        QVERIFY2(error.contains(QString::fromLatin1(part)), run.all());
}

KODMS_TEST_MAIN(TestAdminInit, QCoreApplication)
#include "TestAdminInit.moc"
