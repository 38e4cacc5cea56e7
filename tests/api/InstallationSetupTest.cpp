// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/InstallationSetup.h"
#include "services/api/SignIn.h"
#include "services/api/UserAdmin.h"
#include "services/api/internal/NewInstallation.h"
#include "services/api/internal/SampleAccountsFile.h"
#include "services/session/Runtime.h"
#include "tests/api/support/Installation.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

using namespace KODMS::Services;
using KODMS::Tests::Installation;
using KODMS::Tests::PlainConnection;
using KODMS::Tests::TestDatabase;

class InstallationSetupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_home = std::make_unique<Installation>(); }

    void cleanup() { m_home.reset(); }

    void makesAnInstallationThatStarts();
    void keepsAConfigurationThatIsThere();
    void refusesAnExistingInstallation();
    void ofSimultaneousRunsOneWins();
    void refusesAStoreWithFiles();
    void refusesWhileRunning();
    void badAnswersMakeNothing_data();
    void badAnswersMakeNothing();
    void aFailureLeavesNothingHalfMade_data();
    void aFailureLeavesNothingHalfMade();
    void aSampleHasAnAccountForEachRole();
    void samplePasswordsAreMadeAtRandom();
    void aSampleNeedsAnEmptyFolder();
    void aSampleGoesWhereAWaitingConfigurationSays();
    void anAccountsFileThatIsThereStays();
    void aDamagedAccountsFileIsTold();

private:
    static void expectAnAccountForEachRole(const QVector<SampleAccount> &accounts);
    void expectForTheirOwnerOnly();

    QString sample() const { return m_home->path("sample"); }

    std::unique_ptr<Installation> m_home;
};

void InstallationSetupTest::makesAnInstallationThatStarts()
{
    m_home->initAndStart();
    const auto users = UserAdmin::list();
    QVERIFY(users);
    QCOMPARE(users.value.size(), 1);
    QCOMPARE(users.value[0].loginName, Installation::login());
    QCOMPARE(users.value[0].realName, QStringLiteral("管理员"));
    QCOMPARE(users.value[0].roles, QStringList{QStringLiteral("admin")});
    QVERIFY(SignIn::signIn(Installation::login(), Installation::password()));
    const PlainConnection plain(m_home->place());
    for (const QString &table : plain.tables()) {
        const QStringList rows = plain.sortedRows(QStringLiteral("SELECT * FROM ") + table);
        QVERIFY2(rows.filter(Installation::password()).isEmpty(), qPrintable(table));
    }
    if (TestDatabase::isServer())
        return;
    QFile file(m_home->path("kodms.db"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(!file.readAll().contains(Installation::password().toUtf8()));
}

void InstallationSetupTest::keepsAConfigurationThatIsThere()
{
    m_home->writeIni("; mine\n[robot]\nport = 81\n");
    const QByteArray text = m_home->iniText();
    QVERIFY(text.startsWith("; mine\n"));
    QVERIFY(m_home->init());
    QCOMPARE(m_home->iniText(), text);
}

void InstallationSetupTest::refusesAnExistingInstallation()
{
    QVERIFY(m_home->init());
    const Outcome again = InstallationSetup::init(m_home->iniPath(), QStringLiteral("other"),
                                                  QStringLiteral("X"), Installation::password());
    QVERIFY(!again);
    QVERIFY2(again.text.contains(QDir::toNativeSeparators(m_home->databaseName())),
             qPrintable(again.text));
    QVERIFY(ServiceRuntime::instance().start(m_home->iniPath()));
    QVERIFY(SignIn::signIn(Installation::login(), Installation::password()));
}

static int successesAtOnce(const Configuration &configuration, int runs)
{
    UserRow user;
    user.loginName = Installation::login();
    user.realName = QStringLiteral("管理员");
    user.roles.insert(Role::Admin);
    std::atomic<int> successes{0};
    std::vector<std::thread> threads;
    for (int run = 0; run < runs; ++run) {
        threads.emplace_back([&] {
            if (NewInstallation(configuration).make({user}))
                ++successes;
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    return successes;
}

void InstallationSetupTest::ofSimultaneousRunsOneWins()
{
    constexpr int rounds = 8;
    for (int round = 0; round < rounds; ++round) {
        const QString folder = m_home->path("race") + QString::number(round);
        const QString ini = folder + QStringLiteral("/kodms.ini");
        QVERIFY(QDir().mkpath(folder));
        const TestDatabase place(folder + QStringLiteral("/kodms.db"));
        Configuration configuration = Configuration::defaults(ini, folder);
        place.setIn(configuration);
        QCOMPARE(successesAtOnce(configuration, 4), 1);
        const Outcome started = ServiceRuntime::instance().start(ini);
        QVERIFY2(started, qPrintable(started.text));
        SignIn::actAsOperator();
        const auto users = UserAdmin::list();
        QVERIFY(users);
        QCOMPARE(users.value.size(), 1);
        ServiceRuntime::instance().stop();
    }
}

void InstallationSetupTest::refusesAStoreWithFiles()
{
    m_home->initAndStart();
    NoProgress progress;
    QVERIFY(
        Runtime::current()->fileStore().put(m_home->iniPath(), QStringLiteral("a.zip"), progress));
    ServiceRuntime::instance().stop();
    m_home->loseRecords();
    const Outcome again = m_home->init();
    QVERIFY(!again);
    QVERIFY2(again.text.contains(QStringLiteral("备份")), qPrintable(again.text));
    QVERIFY(!m_home->hasRecords());
}

void InstallationSetupTest::refusesWhileRunning()
{
    m_home->initAndStart();
    QVERIFY(!InstallationSetup::init(m_home->path("other.ini"), Installation::login(),
                                     QStringLiteral("X"), Installation::password()));
    QVERIFY(!InstallationSetup::createSample(sample()));
    QVERIFY(!QFile::exists(sample()));
}

void InstallationSetupTest::badAnswersMakeNothing_data()
{
    QTest::addColumn<QString>("login");
    QTest::addColumn<QString>("realName");
    QTest::addColumn<QString>("password");
    const QString good = Installation::password();
    const QString name = QStringLiteral("名");
    QTest::newRow("empty login") << QString() << name << good;
    QTest::newRow("login in capitals") << QStringLiteral("Boss") << name << good;
    QTest::newRow("login with a blank") << QStringLiteral("the boss") << name << good;
    QTest::newRow("login with a line break") << QStringLiteral("boss\n") << name << good;
    QTest::newRow("login begins with a dot") << QStringLiteral(".boss") << name << good;
    QTest::newRow("login of 33 characters") << QString(33, QLatin1Char('a')) << name << good;
    QTest::newRow("Chinese login") << QStringLiteral("管理员") << name << good;
    QTest::newRow("empty name") << QStringLiteral("boss") << QString() << good;
    QTest::newRow("blank name") << QStringLiteral("boss") << QStringLiteral("  ") << good;
    QTest::newRow("name with NUL") << QStringLiteral("boss") << QString(QChar(0)) << good;
    QTest::newRow("name with a tab") << QStringLiteral("boss") << QStringLiteral("a\tb") << good;
    QTest::newRow("name too long")
        << QStringLiteral("boss") << QString(65, QLatin1Char('n')) << good;
    QTest::newRow("no password") << QStringLiteral("boss") << name << QString();
    QTest::newRow("short password") << QStringLiteral("boss") << name << QStringLiteral("1234567");
    QTest::newRow("endless password")
        << QStringLiteral("boss") << name << QString(257, QLatin1Char('x'));
}

void InstallationSetupTest::badAnswersMakeNothing()
{
    QFETCH(QString, login);
    QFETCH(QString, realName);
    QFETCH(QString, password);
    const QStringList before = m_home->files();
    const Outcome made = InstallationSetup::init(m_home->iniPath(), login, realName, password);
    QVERIFY(!made);
    QVERIFY(!made.text.isEmpty());
    QCOMPARE(m_home->files(), before);
    QVERIFY(!m_home->hasRecords());
}

void InstallationSetupTest::aFailureLeavesNothingHalfMade_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("unknown driver") << QByteArray("[database]\ndriver = other\n");
    QTest::newRow("database below a file") << QByteArray("[database]\npath = kodms.ini/x/k.db\n");
    QTest::newRow("store below a file") << QByteArray("[fileStore]\nroot = kodms.ini/files\n");
}

void InstallationSetupTest::aFailureLeavesNothingHalfMade()
{
    QFETCH(QByteArray, text);
    QFile file(m_home->iniPath());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text.startsWith("[database]") ? text : text + m_home->database().section());
    file.close();
    QVERIFY(!m_home->init());
    QVERIFY(!m_home->hasRecords());
    QVERIFY(QFile::remove(m_home->iniPath()));
    if (TestDatabase::isServer())
        m_home->writeIni({});
    QVERIFY2(m_home->init(), "a second try with a good configuration works");
}

/// Hashing ten passwords takes a while: one sample serves several questions.
void InstallationSetupTest::aSampleHasAnAccountForEachRole()
{
    m_home->database().prepareSample(sample());
    QVERIFY(InstallationSetup::createSample(sample()));
    const auto accounts = InstallationSetup::sampleAccounts(sample());
    QVERIFY2(accounts, qPrintable(accounts.text()));
    expectAnAccountForEachRole(accounts.value);
    expectForTheirOwnerOnly();
    QVERIFY(ServiceRuntime::instance().start(InstallationSetup::sampleConfigPath(sample())));
    QVERIFY(ServiceRuntime::instance().isSample());
    for (const SampleAccount &account : accounts.value) {
        const Outcome signedIn = SignIn::signIn(account.loginName, account.password);
        QVERIFY2(signedIn, qPrintable(account.loginName + signedIn.text));
        QCOMPARE(SignIn::current().realName, account.realName);
        QCOMPARE(SignIn::current().roles, account.roles);
    }
}

void InstallationSetupTest::expectAnAccountForEachRole(const QVector<SampleAccount> &accounts)
{
    QStringList roles;
    QSet<QString> names;
    for (const SampleAccount &account : accounts) {
        names << account.realName;
        roles << (account.roles.isEmpty() ? QStringLiteral("-")
                                          : account.roles.join(QLatin1Char(' ')));
    }
    QCOMPARE(roles, UserAdmin::roleNames() << QStringLiteral("-"));
    QCOMPARE(names.size(), accounts.size());
}

void InstallationSetupTest::expectForTheirOwnerOnly()
{
    const QFileInfo file(sample() + QStringLiteral("/accounts.txt"));
    QVERIFY(file.exists());
#if !defined(Q_OS_WIN) // where rights are not kept in modes
    const auto others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther |
                        QFileDevice::WriteOther;
    QCOMPARE(int(file.permissions() & others), 0);
#endif
}

void InstallationSetupTest::samplePasswordsAreMadeAtRandom()
{
    QSet<QString> passwords;
    for (int i = 0; i < 20; ++i) {
        const QVector<SampleAccount> accounts = SampleAccountsFile::makeAccounts();
        for (const SampleAccount &account : accounts) {
            QVERIFY(account.password.size() >= 12);
            passwords << account.password;
        }
    }
    QCOMPARE(passwords.size(), 200);
}

void InstallationSetupTest::aSampleNeedsAnEmptyFolder()
{
    QVERIFY(QDir().mkpath(sample() + QStringLiteral("/something")));
    const Outcome made = InstallationSetup::createSample(sample());
    QVERIFY(!made);
    QVERIFY(made.text.contains(sample()));
    QCOMPARE(QDir(sample()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
}

void InstallationSetupTest::aSampleGoesWhereAWaitingConfigurationSays()
{
    QVERIFY(QDir().mkpath(sample()));
    QFile ini(InstallationSetup::sampleConfigPath(sample()));
    QVERIFY(ini.open(QIODevice::WriteOnly));
    ini.write("[fileStore]\nroot = shelves\n[robot]\nport = 7999\n" + m_home->database().section());
    ini.close();
    QVERIFY(InstallationSetup::createSample(sample()));
    QVERIFY(QDir(sample() + QStringLiteral("/shelves")).exists());
    QVERIFY(!QDir(sample() + QStringLiteral("/files")).exists());
    QVERIFY(ServiceRuntime::instance().start(ini.fileName()));
    QVERIFY(ServiceRuntime::instance().isSample());
    QCOMPARE(Runtime::current()->configuration().robot.port, 7999);
}

void InstallationSetupTest::anAccountsFileThatIsThereStays()
{
    const QString path = m_home->path("accounts.txt");
    const QVector<SampleAccount> accounts = SampleAccountsFile::makeAccounts();
    QVERIFY(SampleAccountsFile::write(path, accounts));
    const Outcome again = SampleAccountsFile::write(path, SampleAccountsFile::makeAccounts());
    QVERIFY(!again);
    QVERIFY2(again.text.contains(path), qPrintable(again.text));
    const auto kept = SampleAccountsFile::read(path);
    QVERIFY(kept);
    QCOMPARE(kept.value.constFirst().password, accounts.constFirst().password);
}

void InstallationSetupTest::aDamagedAccountsFileIsTold()
{
    QVERIFY(!InstallationSetup::sampleAccounts(sample()));
    QVERIFY(QDir().mkpath(sample()));
    QFile file(sample() + QStringLiteral("/accounts.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("admin\tonly two\n");
    file.close();
    QVERIFY(!InstallationSetup::sampleAccounts(sample()));
}

KODMS_TEST_MAIN(InstallationSetupTest, QCoreApplication)

#include "InstallationSetupTest.moc"
