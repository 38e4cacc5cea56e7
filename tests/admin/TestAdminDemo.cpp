// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/admin/AdminSandbox.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QSet>
#include <QTest>

using KODMS::Tests::AdminRun;
using KODMS::Tests::AdminSandbox;

/// The sample installation with its demo accounts, which has its own place for everything.
class TestAdminDemo : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theDemoHasAnAccountForEachRole();
    void theDemoHasFilesToDownload();
    void theDemoNeedsNoLocale();
    void demoAccountsCanSignIn();
    void demoAccountsAreReadableByTheirOwnerOnly();
    void refusesADemoWhereSomethingStands();
    void refusesAnotherConfiguration();
    void aCancelledDemoLeavesNothing();
    void namesNoAccountsOfARealInstallation();
};

static AdminRun demo(const AdminSandbox &sandbox)
{
    return sandbox.runJson({QStringLiteral("demo"), sandbox.path(QStringLiteral("demo")),
                            QStringLiteral("--flows"), QStringLiteral("12")});
}

static AdminRun checkOfDemo(const AdminSandbox &sandbox)
{
    const AdminRun made = demo(sandbox);
    return made.code != 0 ? made
                          : sandbox.runJson({QStringLiteral("--config"),
                                             made.json()[QStringLiteral("config")].toString(),
                                             QStringLiteral("check")});
}

void TestAdminDemo::theDemoHasFilesToDownload()
{
    const AdminSandbox sandbox;
    const AdminRun check = checkOfDemo(sandbox);
    QVERIFY2(check.code == 0, check.all());
    QVERIFY2(check.json()[QStringLiteral("files")].toInt() >= 12, check.all());
    QCOMPARE(check.json()[QStringLiteral("sampleRecords")].toInt(), 0);
}

/// As in a bare container; the files bear Chinese names.
void TestAdminDemo::theDemoNeedsNoLocale()
{
    AdminSandbox sandbox;
    sandbox.extraEnvironment = QStringList{QStringLiteral("LC_ALL=C"), QStringLiteral("LANG=C")};
    const AdminRun check = checkOfDemo(sandbox);
    QVERIFY2(check.code == 0, check.all());
    QVERIFY2(check.json()[QStringLiteral("files")].toInt() >= 12, check.all());
}

void TestAdminDemo::theDemoHasAnAccountForEachRole()
{
    const AdminSandbox sandbox;
    const AdminRun run = demo(sandbox);
    QVERIFY2(run.code == 0, run.all());
    QSet<QString> roles;
    bool ordinary = false;
    const QJsonArray accounts = run.json()[QStringLiteral("accounts")].toArray();
    for (const auto &account : accounts) {
        const QJsonArray theirs = account.toObject()[QStringLiteral("roles")].toArray();
        ordinary = ordinary || theirs.isEmpty();
        for (const auto &role : theirs)
            roles << role.toString();
    }
    QVERIFY2(ordinary, run.all());
    for (const char *role :
         {"admin", "pre-process", "pre-check-assign", "test-admin", "check-authority",
          "orig-file-update", "orig-file-assign", "show-company-name", "robot"})
        QVERIFY2(roles.contains(QString::fromLatin1(role)), role);
    const AdminRun named =
        sandbox.runJson({QStringLiteral("demo"), sandbox.path(QStringLiteral("demo")),
                         QStringLiteral("--accounts")});
    QCOMPARE(named.json()[QStringLiteral("accounts")].toArray(), accounts);
}

void TestAdminDemo::demoAccountsCanSignIn()
{
    const AdminSandbox sandbox;
    const AdminRun made = demo(sandbox);
    const QString config = made.json()[QStringLiteral("config")].toString();
    const auto errorOf = [&](const QString &login, const QString &password) {
        return sandbox
            .runJson({QStringLiteral("--config"), config, QStringLiteral("order"),
                      QStringLiteral("pay"), QStringLiteral("nojob"), QStringLiteral("--login"),
                      login, QStringLiteral("--password-file"), QStringLiteral("-")},
                     password.toUtf8() + '\n')
            .json()[QStringLiteral("error")]
            .toString();
    };
    // Who is signed in is told that there is no such job, or that it is none of their business.
    const QString refused = errorOf(QStringLiteral("nobody"), QStringLiteral("guessed wrong"));
    QVERIFY(!refused.isEmpty());
    const QJsonArray accounts = made.json()[QStringLiteral("accounts")].toArray();
    QVERIFY2(!accounts.isEmpty(), made.all());
    for (const auto &entry : accounts) {
        const QString login = entry.toObject()[QStringLiteral("login")].toString();
        const QString error =
            errorOf(login, entry.toObject()[QStringLiteral("password")].toString());
        QVERIFY2(!error.isEmpty() && error != refused, qPrintable(login));
    }
}

void TestAdminDemo::demoAccountsAreReadableByTheirOwnerOnly()
{
    const AdminSandbox sandbox;
    const AdminRun made = demo(sandbox);
    const QString password = made.json()[QStringLiteral("accounts")]
                                 .toArray()
                                 .first()
                                 .toObject()[QStringLiteral("password")]
                                 .toString();
    QVERIFY(password.size() >= 8);
    int holders = 0;
    const QStringList files = sandbox.filesBelow(QStringLiteral("demo"));
    for (const QString &line : files) {
        QFile file(line.left(line.lastIndexOf(QLatin1Char(' '))));
        QVERIFY(file.open(QIODevice::ReadOnly));
        if (!file.readAll().contains(password.toUtf8()))
            continue;
        ++holders;
#if !defined(Q_OS_WIN) // where rights are not kept in modes
        QVERIFY2(!(file.permissions() & (QFile::ReadGroup | QFile::ReadOther)),
                 qPrintable(file.fileName()));
#endif
    }
    QCOMPARE(holders, 1);
}

void TestAdminDemo::refusesADemoWhereSomethingStands()
{
    const AdminSandbox sandbox;
    sandbox.write(QStringLiteral("demo/letter.txt"), "mine");
    const AdminRun run = demo(sandbox);
    QVERIFY2(run.code == 1, run.all());
    QCOMPARE(sandbox.filesBelow(QStringLiteral("demo")).size(), 1);
}

/// What would have been ignored, by somebody who thinks of another installation.
void TestAdminDemo::refusesAnotherConfiguration()
{
    const AdminSandbox sandbox;
    const AdminRun run =
        sandbox.run({QStringLiteral("--config"), sandbox.path(QStringLiteral("mine.ini")),
                     QStringLiteral("demo"), sandbox.path(QStringLiteral("demo"))});
    QVERIFY2(run.code == 2, run.all());
    QVERIFY2(run.errors.contains("--config"), run.all());
    QVERIFY(!QFileInfo::exists(sandbox.path(QStringLiteral("demo"))));
    const AdminRun help = sandbox.run({QStringLiteral("demo"), QStringLiteral("--help")});
    QVERIFY2(!help.output.contains("--config"), help.all());
}

void TestAdminDemo::aCancelledDemoLeavesNothing()
{
    if (!AdminSandbox::hasTerminals())
        QSKIP("a program is not interrupted, nor asked at a terminal, here");
    const AdminSandbox sandbox;
    const AdminRun run =
        sandbox.runAndInterrupt({QStringLiteral("demo"), sandbox.path(QStringLiteral("demo")),
                                 QStringLiteral("--flows"), QStringLiteral("2000000")},
                                2500);
    QVERIFY2(run.code == 130, run.all());
    QVERIFY(!QFileInfo::exists(sandbox.path(QStringLiteral("demo"))));
}

void TestAdminDemo::namesNoAccountsOfARealInstallation()
{
    const AdminSandbox sandbox;
    QCOMPARE(sandbox.init().code, 0);
    const AdminRun run =
        sandbox.runJson({QStringLiteral("demo"), sandbox.path(QStringLiteral("place")),
                         QStringLiteral("--accounts")});
    QVERIFY2(run.code == 1, run.all());
}

KODMS_TEST_MAIN(TestAdminDemo, QCoreApplication)
#include "TestAdminDemo.moc"
