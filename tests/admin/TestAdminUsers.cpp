// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/admin/AdminSandbox.h"
#include "tests/support/TestMain.h"

#include <QJsonArray>
#include <QTest>

using KODMS::Tests::AdminRun;
using KODMS::Tests::AdminSandbox;

/// Users: adding, listing, passwords, roles, disabling. One installation; each test has users
/// of its own.
class TestAdminUsers : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void addsAUserWithRolesAndPost();
    void aNewPasswordReplacesTheOld();
    void grantsAndRevokesRoles();
    void refusesWhatIsNotThere_data();
    void refusesWhatIsNotThere();
    void refusesAWrongNumber();
    void refusesASecondUserOfTheSameName();
    void asksForNoPasswordInVain_data();
    void asksForNoPasswordInVain();
    void aDisabledUserCannotSignInUntilEnabled();
    void theLastAdministratorStays();

private:
    AdminRun add(const char *login, const QStringList &more = {}) const;
    QJsonObject listed(const char *login) const;
    AdminRun payAs(const char *login, const QByteArray &password) const;

    AdminSandbox m_sandbox;
};

void TestAdminUsers::initTestCase()
{
    const AdminRun run = m_sandbox.init();
    QVERIFY2(run.code == 0, run.all());
}

AdminRun TestAdminUsers::add(const char *login, const QStringList &more) const
{
    return m_sandbox.runJson(QStringList{QStringLiteral("user"), QStringLiteral("add"),
                                         QString::fromLatin1(login), QStringLiteral("--name"),
                                         QStringLiteral("张伟"), QStringLiteral("--password-file"),
                                         QStringLiteral("-")} +
                                 more,
                             "a first password\n");
}

QJsonObject TestAdminUsers::listed(const char *login) const
{
    const AdminRun run = m_sandbox.runJson({QStringLiteral("user"), QStringLiteral("list")});
    const QJsonArray users = run.json()[QStringLiteral("users")].toArray();
    for (const auto &user : users) {
        if (user.toObject()[QStringLiteral("login")].toString() == QLatin1String(login))
            return user.toObject();
    }
    return {};
}

/// Any command that signs in shows whether a password is good: there is no such job, but that
/// is found out only by who is signed in.
AdminRun TestAdminUsers::payAs(const char *login, const QByteArray &password) const
{
    return m_sandbox.runJson({QStringLiteral("order"), QStringLiteral("pay"),
                              QStringLiteral("web000001"), QStringLiteral("--login"),
                              QString::fromLatin1(login), QStringLiteral("--password-file"),
                              QStringLiteral("-")},
                             password + '\n');
}

void TestAdminUsers::addsAUserWithRolesAndPost()
{
    const AdminRun run = add("zhang", {QStringLiteral("--role"), QStringLiteral("pre-process"),
                                       QStringLiteral("--role"), QStringLiteral("check-authority"),
                                       QStringLiteral("--department"), QStringLiteral("3"),
                                       QStringLiteral("--post"), QStringLiteral("10")});
    QVERIFY2(run.code == 0, run.all());
    const QJsonObject user = listed("zhang");
    QCOMPARE(user[QStringLiteral("id")], run.json()[QStringLiteral("id")]);
    QCOMPARE(user[QStringLiteral("name")].toString(), QStringLiteral("张伟"));
    QCOMPARE(user[QStringLiteral("department")].toInt(), 3);
    QCOMPARE(user[QStringLiteral("post")].toInt(), 10);
    QCOMPARE(user[QStringLiteral("enabled")], QJsonValue(true));
    const QJsonArray roles = user[QStringLiteral("roles")].toArray();
    QCOMPARE(roles.size(), 2);
    QVERIFY(roles.contains(QStringLiteral("pre-process")));
    QVERIFY(roles.contains(QStringLiteral("check-authority")));
}

void TestAdminUsers::aNewPasswordReplacesTheOld()
{
    QCOMPARE(add("wang", {QStringLiteral("--role"), QStringLiteral("admin")}).code, 0);
    const QString good =
        payAs("wang", "a first password").json()[QStringLiteral("error")].toString();
    QVERIFY2(good.contains(QStringLiteral("web000001")), qPrintable(good));
    const AdminRun changed =
        m_sandbox.run({QStringLiteral("user"), QStringLiteral("passwd"), QStringLiteral("wang"),
                       QStringLiteral("--password-file"), QStringLiteral("-")},
                      "a second password\n");
    QVERIFY2(changed.code == 0, changed.all());
    const QString old =
        payAs("wang", "a first password").json()[QStringLiteral("error")].toString();
    QVERIFY2(!old.isEmpty() && !old.contains(QStringLiteral("web000001")), qPrintable(old));
    const QString fresh =
        payAs("wang", "a second password").json()[QStringLiteral("error")].toString();
    QVERIFY2(fresh.contains(QStringLiteral("web000001")), qPrintable(fresh));
}

void TestAdminUsers::grantsAndRevokesRoles()
{
    QCOMPARE(add("li", {QStringLiteral("--role"), QStringLiteral("robot")}).code, 0);
    const AdminRun run =
        m_sandbox.runJson({QStringLiteral("user"), QStringLiteral("role"), QStringLiteral("li"),
                           QStringLiteral("--grant"), QStringLiteral("test-admin"),
                           QStringLiteral("--revoke"), QStringLiteral("robot")});
    QVERIFY2(run.code == 0, run.all());
    QCOMPARE(listed("li")[QStringLiteral("roles")].toArray(),
             QJsonArray({QStringLiteral("test-admin")}));
}

void TestAdminUsers::refusesWhatIsNotThere_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("named");
    const auto row = [](const char *name, const char *line, int code, const char *named) {
        QTest::newRow(name) << QString::fromLatin1(line) << code << QString::fromLatin1(named);
    };
    row("disabling nobody", "user disable nobody", 1, "nobody");
    row("enabling nobody", "user enable nobody", 1, "nobody");
    row("a role for nobody", "user role nobody --grant admin", 1, "nobody");
    row("a password for nobody", "user passwd nobody --password-file -", 1, "nobody");
    row("a role that does not exist", "user role chief --grant king", 2, "king");
    row("taking away such a role", "user role chief --revoke king", 2, "king");
    row("neither giving nor taking", "user role chief", 2, "--grant");
}

void TestAdminUsers::refusesWhatIsNotThere()
{
    QFETCH(QString, line);
    QFETCH(int, code);
    QFETCH(QString, named);
    const AdminRun run =
        m_sandbox.runJson(line.split(QLatin1Char(' ')), "a perfectly good password\n");
    QVERIFY2(run.code == code, run.all());
    QVERIFY2(run.json()[QStringLiteral("error")].toString().contains(named), run.all());
}

void TestAdminUsers::refusesAWrongNumber()
{
    for (const char *number : {"-1", "ten", "", "99999999999"}) {
        const AdminRun run =
            add("zhao", {QStringLiteral("--department=") + QString::fromLatin1(number)});
        QVERIFY2(run.code == 2, run.all());
    }
    QVERIFY(listed("zhao").isEmpty());
}

void TestAdminUsers::refusesASecondUserOfTheSameName()
{
    QCOMPARE(add("sun").code, 0);
    const AdminRun again = add("sun");
    QVERIFY2(again.code == 1, again.all());
    QVERIFY2(again.json()[QStringLiteral("error")].toString().contains(QStringLiteral("sun")),
             again.all());
}

void TestAdminUsers::asksForNoPasswordInVain_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("a login with a capital") << QStringLiteral("user add Wu --name W");
    QTest::newRow("a login that is taken") << QStringLiteral("user add chief --name C");
    QTest::newRow("a role that is none") << QStringLiteral("user add wu --name W --role king");
    QTest::newRow("a new password for nobody") << QStringLiteral("user passwd nobody");
}

void TestAdminUsers::asksForNoPasswordInVain()
{
    if (!AdminSandbox::hasTerminals())
        QSKIP("a program is not interrupted, nor asked at a terminal, here");
    QFETCH(QString, line);
    QByteArray shown;
    const AdminRun run = m_sandbox.runOnTerminal(line.split(QLatin1Char(' ')), "never", &shown);
    QVERIFY2(run.code == 1, run.all());
    QVERIFY2(!run.errors.contains("password:") && !run.errors.contains("new user:"), run.all());
}

void TestAdminUsers::aDisabledUserCannotSignInUntilEnabled()
{
    QCOMPARE(add("zhou", {QStringLiteral("--role"), QStringLiteral("admin")}).code, 0);
    const auto error = [this] {
        return payAs("zhou", "a first password").json()[QStringLiteral("error")].toString();
    };
    QCOMPARE(
        m_sandbox.run({QStringLiteral("user"), QStringLiteral("disable"), QStringLiteral("zhou")})
            .code,
        0);
    QCOMPARE(listed("zhou")[QStringLiteral("enabled")], QJsonValue(false));
    QVERIFY2(!error().contains(QStringLiteral("web000001")), qPrintable(error()));
    QCOMPARE(
        m_sandbox.run({QStringLiteral("user"), QStringLiteral("enable"), QStringLiteral("zhou")})
            .code,
        0);
    QVERIFY2(error().contains(QStringLiteral("web000001")), qPrintable(error()));
}

void TestAdminUsers::theLastAdministratorStays()
{
    const AdminSandbox alone;
    QCOMPARE(alone.init().code, 0);
    QCOMPARE(alone.run({QStringLiteral("user"), QStringLiteral("disable"), QStringLiteral("chief")})
                 .code,
             1);
    QCOMPARE(alone
                 .run({QStringLiteral("user"), QStringLiteral("role"), QStringLiteral("chief"),
                       QStringLiteral("--revoke"), QStringLiteral("admin")})
                 .code,
             1);
}

KODMS_TEST_MAIN(TestAdminUsers, QCoreApplication)
#include "TestAdminUsers.moc"
