// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/UserAdmin.h"
#include "services/api/SignIn.h"
#include "services/session/Runtime.h"
#include "tests/api/support/Installation.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <functional>
#include <memory>

using namespace KODMS::Services;
using KODMS::Tests::Installation;
using KODMS::Tests::NoticeLog;

class UserAdminTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_home.reset(); }

    void addsAndLists();
    void aNameIsTakenWhateverItsCase();
    void refusesWhatIsNoAccount_data();
    void refusesWhatIsNoAccount();
    void changesAPassword();
    void aNewPasswordEndsTheDelay();
    void grantsAndRevokesRoles();
    void disablesAndEnables();
    void theLastAdministratorStays();
    void unknownUsersAndRoles();
    void everyChangeIsAudited();
    void onlyAnAdministratorWhenSomebodyIsSignedIn();
    void theOperatorHasNoSeatAtTheDesks();
    void nobodyIsRefused();
    void withoutServices();

private:
    static NewUser someone(const QString &login = QStringLiteral("anna"))
    {
        NewUser user;
        user.loginName = login;
        user.realName = QStringLiteral("安娜");
        user.password = QStringLiteral("anna's password");
        user.department = 2;
        user.post = 6;
        user.roles = QStringList{QStringLiteral("pre-process")};
        return user;
    }

    static UserAccount account(const QString &login)
    {
        const auto users = UserAdmin::list();
        for (const UserAccount &one : users.value) {
            if (one.loginName == login)
                return one;
        }
        return {};
    }

    static int events(const char *action)
    {
        SqlQuery query = Runtime::current()->records().database().prepare(
            QStringLiteral("SELECT count(*) AS events FROM events WHERE action = ?"));
        query.bind(0, QString::fromLatin1(action)).exec();
        return query.next() ? query.number("events") : -1;
    }

    const QString m_login = QStringLiteral("anna");
    std::unique_ptr<Installation> m_home;
};

void UserAdminTest::init()
{
    m_home = std::make_unique<Installation>();
    m_home->initAndStart();
}

void UserAdminTest::addsAndLists()
{
    const auto id = UserAdmin::add(someone());
    QVERIFY2(id, qPrintable(id.text()));
    const UserAccount added = account(m_login);
    QCOMPARE(added.id, id.value);
    QCOMPARE(added.realName, QStringLiteral("安娜"));
    QCOMPARE(added.department, 2);
    QCOMPARE(added.post, 6);
    QVERIFY(added.enabled);
    QCOMPARE(added.roles, QStringList{QStringLiteral("pre-process")});
    QCOMPARE(UserAdmin::list().value.size(), 2);
    QVERIFY(SignIn::signIn(m_login, QStringLiteral("anna's password")));
    QCOMPARE(SignIn::current().id, id.value);
    SignIn::signOut();
    QCOMPARE(SignIn::current().id, 0);
}

void UserAdminTest::aNameIsTakenWhateverItsCase()
{
    QVERIFY(UserAdmin::add(someone()));
    const auto again = UserAdmin::add(someone());
    QVERIFY(!again);
    QVERIFY(again.text().contains(m_login));
    QCOMPARE(UserAdmin::list().value.size(), 2);
}

void UserAdminTest::refusesWhatIsNoAccount_data()
{
    QTest::addColumn<QString>("login");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("role");
    const QString good = QStringLiteral("long enough");
    QTest::newRow("unknown role") << QStringLiteral("bert") << good << QStringLiteral("king");
    QTest::newRow("empty role") << QStringLiteral("bert") << good << QString();
    QTest::newRow("role in capitals") << QStringLiteral("bert") << good << QStringLiteral("Admin");
    QTest::newRow("bad login") << QStringLiteral("b ert") << good << QStringLiteral("admin");
    QTest::newRow("short password")
        << QStringLiteral("bert") << QStringLiteral("short") << QStringLiteral("admin");
}

void UserAdminTest::refusesWhatIsNoAccount()
{
    QFETCH(QString, login);
    QFETCH(QString, password);
    QFETCH(QString, role);
    NewUser user = someone(login);
    user.password = password;
    user.roles = QStringList{role};
    QVERIFY(!UserAdmin::add(user));
    QCOMPARE(UserAdmin::list().value.size(), 1);
}

void UserAdminTest::changesAPassword()
{
    QVERIFY(UserAdmin::add(someone()));
    QVERIFY(!UserAdmin::setPassword(m_login, QStringLiteral("short")));
    QVERIFY(UserAdmin::setPassword(m_login, QStringLiteral("another password")));
    QVERIFY(!SignIn::signIn(m_login, QStringLiteral("anna's password")));
    QVERIFY(SignIn::signIn(m_login, QStringLiteral("another password")));
}

void UserAdminTest::aNewPasswordEndsTheDelay()
{
    QVERIFY(UserAdmin::add(someone()));
    Runtime::current()->records().database().run(
        QStringLiteral("INSERT INTO sign_in_failures (login_name, failures, last_time) "
                       "VALUES ('anna', 12, '2999-01-01T00:00:00.000Z')"));
    QVERIFY(!SignIn::signIn(m_login, QStringLiteral("anna's password")));
    QVERIFY(UserAdmin::setPassword(m_login, QStringLiteral("another password")));
    QVERIFY(SignIn::signIn(m_login, QStringLiteral("another password")));
}

void UserAdminTest::grantsAndRevokesRoles()
{
    QVERIFY(UserAdmin::add(someone()));
    for (const QString &role : UserAdmin::roleNames()) {
        QVERIFY(UserAdmin::grantRole(m_login, role));
        QVERIFY2(UserAdmin::grantRole(m_login, role), "twice is no failure");
    }
    QCOMPARE(account(m_login).roles, UserAdmin::roleNames());
    for (const QString &role : UserAdmin::roleNames()) {
        QVERIFY(UserAdmin::revokeRole(m_login, role));
        QVERIFY(UserAdmin::revokeRole(m_login, role));
    }
    QVERIFY(account(m_login).roles.isEmpty());
}

void UserAdminTest::disablesAndEnables()
{
    QVERIFY(UserAdmin::add(someone()));
    QVERIFY(UserAdmin::setEnabled(m_login, false));
    QVERIFY(!account(m_login).enabled);
    QVERIFY(!SignIn::signIn(m_login, QStringLiteral("anna's password")));
    QVERIFY(UserAdmin::setEnabled(m_login, true));
    QVERIFY(SignIn::signIn(m_login, QStringLiteral("anna's password")));
}

void UserAdminTest::theLastAdministratorStays()
{
    const QString boss = Installation::login();
    const QString admin = QStringLiteral("admin");
    QVERIFY(!UserAdmin::revokeRole(boss, admin));
    QVERIFY(!UserAdmin::setEnabled(boss, false));
    QVERIFY(UserAdmin::add(someone()));
    QVERIFY(UserAdmin::grantRole(m_login, admin));
    QVERIFY(UserAdmin::setEnabled(m_login, false));
    QVERIFY2(!UserAdmin::revokeRole(boss, admin), "a disabled administrator does not count");
    QVERIFY(UserAdmin::setEnabled(m_login, true));
    QVERIFY(UserAdmin::setEnabled(boss, false));
    QVERIFY(!UserAdmin::revokeRole(m_login, admin));
    QVERIFY2(UserAdmin::revokeRole(boss, admin), "who is disabled is not the last one");
}

void UserAdminTest::unknownUsersAndRoles()
{
    const QString nobody = QStringLiteral("nobody");
    const QString admin = QStringLiteral("admin");
    QVERIFY(!UserAdmin::setPassword(nobody, QStringLiteral("long enough")));
    QVERIFY(!UserAdmin::grantRole(nobody, admin));
    QVERIFY(!UserAdmin::revokeRole(nobody, admin));
    QVERIFY(!UserAdmin::setEnabled(nobody, true));
    QVERIFY(!UserAdmin::grantRole(Installation::login(), QStringLiteral("king")));
    QVERIFY(!UserAdmin::revokeRole(Installation::login(), QString()));
}

void UserAdminTest::everyChangeIsAudited()
{
    QCOMPARE(events("user.add"), 1);
    QVERIFY(UserAdmin::add(someone()));
    QVERIFY(UserAdmin::setPassword(m_login, QStringLiteral("another password")));
    QVERIFY(UserAdmin::grantRole(m_login, QStringLiteral("admin")));
    QVERIFY(UserAdmin::revokeRole(m_login, QStringLiteral("admin")));
    QVERIFY(UserAdmin::setEnabled(m_login, false));
    QCOMPARE(events("user.add"), 2);
    QCOMPARE(events("user.passwd"), 1);
    QCOMPARE(events("user.role"), 2);
    QCOMPARE(events("user.enable"), 1);
}

void UserAdminTest::onlyAnAdministratorWhenSomebodyIsSignedIn()
{
    QVERIFY(UserAdmin::add(someone()));
    QVERIFY(SignIn::signIn(m_login, QStringLiteral("anna's password")));
    const QString boss = Installation::login();
    const std::vector<std::function<bool()>> calls{
        [&] { return UserAdmin::add(someone(QStringLiteral("bert"))).outcome.ok; },
        [&] { return UserAdmin::setPassword(boss, QStringLiteral("another one")).ok; },
        [&] { return UserAdmin::grantRole(m_login, QStringLiteral("admin")).ok; },
        [&] { return UserAdmin::revokeRole(boss, QStringLiteral("admin")).ok; },
        [&] { return UserAdmin::setEnabled(boss, false).ok; },
        [&] { return UserAdmin::list().outcome.ok; }};
    for (const auto &call : calls) {
        NoticeLog log;
        QVERIFY(!call());
        QCOMPARE(log.notices.size(), 1);
    }
    QVERIFY(SignIn::signIn(boss, Installation::password()));
    QCOMPARE(account(m_login).roles, QStringList{QStringLiteral("pre-process")});
    QVERIFY(UserAdmin::grantRole(m_login, QStringLiteral("robot")));
}

void UserAdminTest::theOperatorHasNoSeatAtTheDesks()
{
    SignIn::actAsOperator();
    QCOMPARE(SignIn::current().id, 0);
    QCOMPARE(SignIn::current().loginName, QStringLiteral("kodms-admin"));
    QCOMPARE(SignIn::current().roles, QStringList{QStringLiteral("admin")});
    QVERIFY(UserAdmin::add(someone()));
    SignIn::signOut();
    QVERIFY(SignIn::current().roles.isEmpty());
}

/// Nobody is not the operator: a host without a signed-in user changes no account.
void UserAdminTest::nobodyIsRefused()
{
    SignIn::signOut();
    NoticeLog log;
    QVERIFY(!UserAdmin::add(someone()));
    QVERIFY(!UserAdmin::grantRole(Installation::login(), QStringLiteral("robot")));
    QVERIFY(!UserAdmin::list());
    QCOMPARE(log.notices.size(), 3);
    SignIn::actAsOperator();
    QCOMPARE(UserAdmin::list().value.size(), 1);
    QVERIFY(UserAdmin::add(someone()));
}

void UserAdminTest::withoutServices()
{
    ServiceRuntime::instance().stop();
    QVERIFY(!UserAdmin::list());
    QVERIFY(!UserAdmin::add(someone()));
    QVERIFY(!UserAdmin::setEnabled(Installation::login(), true));
}

KODMS_TEST_MAIN(UserAdminTest, QCoreApplication)

#include "UserAdminTest.moc"
