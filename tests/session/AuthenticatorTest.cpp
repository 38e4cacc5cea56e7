// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/session/Authenticator.h"
#include "services/records/TimeText.h"
#include "services/session/PasswordHash.h"
#include "tests/bll/support/RecordsHome.h"
#include "tests/support/TestMain.h"

#include <QTest>

using namespace KODMS;
using Services::Authenticator;
using Services::PasswordHash;
using Services::Role;

/// Signing in, and what wrong passwords in a row cost. The clock is the test's.
class AuthenticatorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theRightPasswordGivesTheActor();
    void loginNamesKnowNoCase();
    void everyWrongWaySaysTheSame();
    void aDisabledUserLearnsItOnlyWithThePassword();
    void delaysGrow_data();
    void delaysGrow();
    void fiveFailuresInARowDelay();
    void anUnknownNameIsDelayedAlike();
    void theDelayOutlivesARestart();
    void aTryDuringTheDelayDoesNotCount();
    void aSuccessForgetsTheFailures();
    void otherUsersAreNotDelayed();
    void aClockPutBackNeverLocksForever();
    void failuresAreForgottenAfterADay();
    void wrongNamesDoNotPileUp();
    void everyTryIsAudited();
    void aNameThatIsNobodysIsNotWrittenDown();
    void awkwardNames_data();
    void awkwardNames();

private:
    Services::Result<Services::Actor> tryWith(const QString &login, const QString &password)
    {
        return Authenticator(m_home.database(), [this] { return m_now; }).check(login, password);
    }

    void failTimes(const QString &login, int times)
    {
        for (int i = 0; i < times; ++i)
            QVERIFY(!tryWith(login, QStringLiteral("wrong")));
    }

    /// As if so many tries had failed just now; hashing so often would take long.
    void hasFailed(const QString &login, int times)
    {
        Services::SqlQuery query = m_home.database().prepare(QStringLiteral(
            "INSERT INTO sign_in_failures (login_name, failures, last_time) VALUES (?, ?, ?)"));
        query.bind(0, login).bind(1, times).bind(2, Services::storedTime(m_now)).exec();
    }

    const QString m_right = QStringLiteral("right password");
    const QString m_login = QStringLiteral("anna");
    Tests::RecordsHome m_home;
    QDateTime m_now;
    int m_user = 0;
};

void AuthenticatorTest::init()
{
    static const QString hash = PasswordHash::make(m_right);
    m_home.reset();
    m_now = QDateTime(QDate(2026, 3, 1), QTime(8, 0), Qt::UTC);
    m_user = m_home.addUser(m_login, {Role::PreProcess, Role::CheckAuthority}, 3, 10);
    Services::UserRecords(m_home.database()).setPasswordHash(m_user, hash);
}

void AuthenticatorTest::theRightPasswordGivesTheActor()
{
    const auto actor = tryWith(m_login, m_right);
    QVERIFY2(actor, qPrintable(actor.text()));
    QCOMPARE(actor.value.userId, m_user);
    QCOMPARE(actor.value.loginName, m_login);
    QCOMPARE(actor.value.realName, QStringLiteral("ANNA"));
    QCOMPARE(actor.value.department, 3);
    QCOMPARE(actor.value.post, 10);
    QVERIFY((actor.value.roles == Services::RoleSet{Role::PreProcess, Role::CheckAuthority}));
    QVERIFY(
        m_home.get(QStringLiteral("users"), QStringLiteral("last_sign_in_time"), m_user).isValid());
}

void AuthenticatorTest::loginNamesKnowNoCase()
{
    QVERIFY(tryWith(QStringLiteral("ANNA"), m_right));
}

void AuthenticatorTest::everyWrongWaySaysTheSame()
{
    const auto wrongPassword = tryWith(m_login, QStringLiteral("wrong"));
    const auto unknownUser = tryWith(QStringLiteral("bert"), m_right);
    const auto nothing = tryWith(QString(), QString());
    QVERIFY(!wrongPassword && !unknownUser && !nothing);
    QCOMPARE(wrongPassword.text(), unknownUser.text());
    QCOMPARE(wrongPassword.text(), nothing.text());
}

void AuthenticatorTest::aDisabledUserLearnsItOnlyWithThePassword()
{
    Services::UserRecords(m_home.database()).setDisabled(m_user, true);
    const auto unknown = tryWith(QStringLiteral("bert"), m_right);
    const auto wrong = tryWith(m_login, QStringLiteral("wrong"));
    const auto right = tryWith(m_login, m_right);
    QVERIFY(!wrong && !right);
    QCOMPARE(wrong.text(), unknown.text());
    QVERIFY(right.text() != wrong.text());
}

void AuthenticatorTest::delaysGrow_data()
{
    QTest::addColumn<int>("failures");
    QTest::addColumn<int>("seconds");
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("four") << 4 << 0;
    QTest::newRow("five") << 5 << 10;
    QTest::newRow("six") << 6 << 20;
    QTest::newRow("seven") << 7 << 40;
    QTest::newRow("eleven") << 11 << 640;
    QTest::newRow("twelve") << 12 << 900;
    QTest::newRow("a million") << 1000000 << 900;
}

void AuthenticatorTest::delaysGrow()
{
    QFETCH(int, failures);
    QTEST(Authenticator::delayAfter(failures), "seconds");
}

void AuthenticatorTest::fiveFailuresInARowDelay()
{
    failTimes(m_login, 5);
    const auto early = tryWith(m_login, m_right);
    QVERIFY(!early);
    QVERIFY2(early.text().contains(QStringLiteral("10")), qPrintable(early.text()));
    m_now = m_now.addMSecs(9999);
    QVERIFY(!tryWith(m_login, m_right));
    m_now = m_now.addMSecs(1);
    QVERIFY(!tryWith(m_login, QStringLiteral("wrong")));
    m_now = m_now.addSecs(19);
    QVERIFY(!tryWith(m_login, m_right));
    m_now = m_now.addSecs(1);
    QVERIFY(tryWith(m_login, m_right));
}

void AuthenticatorTest::anUnknownNameIsDelayedAlike()
{
    hasFailed(QStringLiteral("bert"), 5);
    hasFailed(m_login, 5);
    const auto unknown = tryWith(QStringLiteral("bert"), QStringLiteral("wrong"));
    const auto known = tryWith(m_login, QStringLiteral("wrong"));
    QVERIFY(!unknown && !known);
    QCOMPARE(unknown.text(), known.text());
}

void AuthenticatorTest::theDelayOutlivesARestart()
{
    hasFailed(m_login, 5);
    Services::Database reopened(m_home.settings());
    QVERIFY(!Authenticator(reopened, [this] { return m_now; }).check(m_login, m_right));
    m_now = m_now.addSecs(10);
    QVERIFY(Authenticator(reopened, [this] { return m_now; }).check(m_login, m_right));
}

void AuthenticatorTest::aTryDuringTheDelayDoesNotCount()
{
    hasFailed(m_login, 5);
    failTimes(m_login, 20);
    m_now = m_now.addSecs(10);
    QVERIFY(tryWith(m_login, m_right));
}

void AuthenticatorTest::aSuccessForgetsTheFailures()
{
    hasFailed(m_login, 4);
    QVERIFY(tryWith(m_login, m_right));
    hasFailed(m_login, 4);
    QVERIFY(tryWith(m_login, m_right));
}

void AuthenticatorTest::otherUsersAreNotDelayed()
{
    hasFailed(QStringLiteral("bert"), 6);
    QVERIFY(tryWith(m_login, m_right));
}

void AuthenticatorTest::aClockPutBackNeverLocksForever()
{
    hasFailed(m_login, 5);
    m_now = m_now.addYears(-1);
    QVERIFY2(tryWith(m_login, m_right).text().contains(QStringLiteral("10")),
             "no longer than a delay");
}

void AuthenticatorTest::failuresAreForgottenAfterADay()
{
    hasFailed(QStringLiteral("bert"), 5);
    m_now = m_now.addDays(1).addSecs(1);
    failTimes(m_login, 1);
    QCOMPARE(m_home.one(QStringLiteral("SELECT count(*) AS value FROM sign_in_failures")).toInt(),
             1);
}

void AuthenticatorTest::wrongNamesDoNotPileUp()
{
    hasFailed(m_login, 7);
    m_now = m_now.addSecs(60);
    m_home.database().run(
        QStringLiteral("INSERT INTO sign_in_failures (login_name, failures, last_time) "
                       "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                       "WHERE i < 100000) SELECT 'wrong' || i, 1, '2026-03-01T08:0' || "
                       "(1 + i / 60000) || ':' || substr('' || (100 + i / 1000 % 60), 2) || '.' || "
                       "substr('' || (1000 + i % 1000), 2) || 'Z' FROM n"));
    m_now = m_now.addSecs(120);
    QVERIFY(!tryWith(QStringLiteral("one more"), QStringLiteral("wrong")));
    const auto kept = [this](const char *condition) {
        return m_home
            .one(QStringLiteral("SELECT count(*) AS value FROM sign_in_failures WHERE ") +
                 QLatin1String(condition))
            .toInt();
    };
    QCOMPARE(kept("1 = 1"), 10001);
    QCOMPARE(kept("login_name = 'one more'"), 1);
    QCOMPARE(kept("login_name = 'wrong100000'"), 1);
    QCOMPARE(kept("login_name = 'wrong1'"), 0);
    QCOMPARE(kept("login_name = 'anna' AND failures = 7"), 1);
}

void AuthenticatorTest::everyTryIsAudited()
{
    failTimes(m_login, 1);
    QCOMPARE(m_home.lastEvent()[QStringLiteral("action")].toString(),
             QStringLiteral("session.SignIn"));
    QCOMPARE(m_home.lastEvent()[QStringLiteral("record_name")].toString(), m_login);
    QCOMPARE(m_home.refusals(), 1);
    QVERIFY(tryWith(m_login, m_right));
    QCOMPARE(m_home.lastEvent()[QStringLiteral("user_id")].toInt(), m_user);
    QCOMPARE(m_home.events(), 1);
    const QStringList all = m_home.column(
        QStringLiteral("SELECT record_name || before_value || after_value FROM events"));
    QVERIFY(!all.filter(m_login).isEmpty());
    QVERIFY(all.filter(m_right).isEmpty());
}

/// A password typed where the name belongs must not stand in the audit for ever.
void AuthenticatorTest::aNameThatIsNobodysIsNotWrittenDown()
{
    failTimes(m_right, 1);
    QCOMPARE(m_home.refusals(), 1);
    QCOMPARE(m_home.lastEvent()[QStringLiteral("record_name")].toString(),
             QStringLiteral("(unknown)"));
}

void AuthenticatorTest::awkwardNames_data()
{
    QTest::addColumn<QString>("login");
    QTest::newRow("quotes") << QStringLiteral("' OR 1=1 --");
    QTest::newRow("wildcards") << QStringLiteral("%_\\");
    QTest::newRow("NUL") << QStringLiteral("anna") + QChar(0);
    QTest::newRow("blank behind") << QStringLiteral("anna ");
    QTest::newRow("emoji") << QStringLiteral("😀");
    QTest::newRow("1 MB") << QString(1000000, QLatin1Char('a'));
    QTest::newRow("lone surrogate") << QString(QChar(0xd800));
}

void AuthenticatorTest::awkwardNames()
{
    QFETCH(QString, login);
    QVERIFY(!tryWith(login, m_right));
    QCOMPARE(m_home.one(QStringLiteral("SELECT failures AS value FROM sign_in_failures")).toInt(),
             1);
    QVERIFY(tryWith(m_login, m_right));
}

KODMS_TEST_MAIN(AuthenticatorTest, QCoreApplication)

#include "AuthenticatorTest.moc"
