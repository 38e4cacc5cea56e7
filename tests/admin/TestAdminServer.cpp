// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/admin/AdminSandbox.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QFileInfo>
#include <QTest>

#include <memory>

using namespace KODMS::Tests;
using KODMS::Services::DatabaseSettings;

namespace {

constexpr const char *Ini = "place/kodms.ini";

} // namespace

/// What kodms-admin finds on a database server.
class TestAdminServer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aDatabaseThatIsNotThereIsMade();
    void aDatabaseOfAnotherOrderIsRefused();
    void tablesOfAnotherProgramStay();
    void whatTheServerRefusesIsSaid_data();
    void whatTheServerRefusesIsSaid();
    void initSaysWhyThereIsNoDatabase_data();
    void initSaysWhyThereIsNoDatabase();
    void initSaysThatItMayNotMakeTables();
    void withoutADatabaseInitIsNamed();
    void backupsAreTheServersOwn();

private:
    void runOnServer(const QString &statement) const;
    /// An account that may do nothing but sign in; its password's file is beside the configuration.
    void makeAccount() const;
    QByteArray withAccount(QByteArray ini) const;
    QByteArray iniWith(const QString &key, const QString &value) const;

    std::unique_ptr<TestDatabase> m_place;
    std::unique_ptr<AdminSandbox> m_sandbox;
    QString m_other;   ///< a database that no test makes beforehand
    QString m_account; ///< likewise
};

void TestAdminServer::init()
{
    m_place = std::make_unique<TestDatabase>();
    m_sandbox = std::make_unique<AdminSandbox>();
    m_other = m_place->settings().name + QStringLiteral("_other");
    m_account = m_place->settings().name + QStringLiteral("_person");
}

void TestAdminServer::cleanup()
{
    m_sandbox.reset();
    runOnServer(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(m_other));
    runOnServer(QStringLiteral("GRANT CONNECT ON DATABASE postgres TO PUBLIC"));
    runOnServer(QStringLiteral("DROP ROLE IF EXISTS %1").arg(m_account));
    m_place.reset();
}

void TestAdminServer::runOnServer(const QString &statement) const
{
    PlainConnection(m_place->settings()).run(statement);
}

/// The place of this test, but for one of its keys.
QByteArray TestAdminServer::iniWith(const QString &key, const QString &value) const
{
    QStringList lines =
        QString::fromUtf8(m_place->section()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (QString &line : lines) {
        if (line.startsWith(key + QLatin1String(" = ")))
            line = key + QLatin1String(" = ") + value;
    }
    if (!lines.contains(key + QLatin1String(" = ") + value))
        lines << key + QLatin1String(" = ") + value;
    return lines.join(QLatin1Char('\n')).toUtf8() + '\n';
}

void TestAdminServer::aDatabaseThatIsNotThereIsMade()
{
    m_sandbox->write(QLatin1String(Ini), iniWith(QStringLiteral("name"), m_other));
    const AdminRun made = m_sandbox->init();
    QVERIFY2(made.code == 0, made.all());
    const AdminRun status = m_sandbox->runJson({QStringLiteral("status")});
    QVERIFY2(status.code == 0, status.all());
    QVERIFY2(status.json()[QStringLiteral("database")].toString().contains(m_other), status.all());
    DatabaseSettings settings = m_place->settings();
    settings.name = m_other;
    QCOMPARE(PlainConnection(settings).texts(QStringLiteral(
                 "SELECT datcollate FROM pg_database WHERE datname = current_database()")),
             QStringList(QStringLiteral("C.UTF-8")));
}

void TestAdminServer::aDatabaseOfAnotherOrderIsRefused()
{
    runOnServer(QStringLiteral("CREATE DATABASE %1 TEMPLATE template0 ENCODING 'SQL_ASCII' "
                               "LOCALE 'C'")
                    .arg(m_other));
    m_sandbox->write(QLatin1String(Ini), iniWith(QStringLiteral("name"), m_other));
    const AdminRun run = m_sandbox->init();
    QVERIFY2(run.code == 1, run.all());
    QVERIFY2(run.errors.contains("SQL_ASCII") && run.errors.contains("C.UTF-8"), run.all());
    QVERIFY2(!run.errors.contains("no connection"), run.all());
    const AdminRun status = m_sandbox->run({QStringLiteral("status")});
    QVERIFY2(status.code == 1 && status.errors.contains("SQL_ASCII"), status.all());
    QVERIFY2(!status.errors.contains("no connection"), status.all());
    DatabaseSettings settings = m_place->settings();
    settings.name = m_other;
    QCOMPARE(PlainConnection(settings).tables(), QStringList());
}

void TestAdminServer::tablesOfAnotherProgramStay()
{
    runOnServer(QStringLiteral("CREATE TABLE theirs (x INTEGER)"));
    m_sandbox->write(QLatin1String(Ini), m_place->section());
    const AdminRun run = m_sandbox->init();
    QVERIFY2(run.code == 1, run.all());
    QVERIFY2(run.errors.contains(m_place->settings().name.toUtf8()), run.all());
    QCOMPARE(PlainConnection(m_place->settings()).tables(), QStringList(QStringLiteral("theirs")));
}

void TestAdminServer::whatTheServerRefusesIsSaid_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("told");
    const auto row = [](const char *name, const char *key, const char *value, const char *told) {
        QTest::newRow(name) << QString::fromLatin1(key) << QString::fromLatin1(value)
                            << QByteArray(told);
    };
    row("an account that is none", "user", "intruder", "intruder");
    row("no password", "passwordFile", "", "password");
    row("a password file that is not there", "passwordFile", "nowhere", "nowhere");
    row("a server without encryption", "sslMode", "require", "SSL");
    row("a certificate that is not there", "sslRootCertificate", "nowhere.crt", "nowhere.crt");
}

void TestAdminServer::whatTheServerRefusesIsSaid()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QByteArray, told);
    m_sandbox->write(QLatin1String(Ini), iniWith(key, value));
    const AdminRun run = m_sandbox->init();
    QVERIFY2(run.code == 1, run.all());
    QVERIFY2(run.errors.contains(told), run.all());
    QCOMPARE(PlainConnection(m_place->settings()).tables(), QStringList());
}

void TestAdminServer::makeAccount() const
{
    runOnServer(QStringLiteral("CREATE ROLE %1 LOGIN PASSWORD 'let-me-in'").arg(m_account));
    m_sandbox->write(QStringLiteral("place/their-password"), "let-me-in\n");
}

QByteArray TestAdminServer::withAccount(QByteArray ini) const
{
    const DatabaseSettings &settings = m_place->settings();
    ini.replace("user = " + settings.user.toUtf8(), "user = " + m_account.toUtf8());
    ini.replace("passwordFile = " + settings.passwordFile.toUtf8(),
                "passwordFile = their-password");
    return ini;
}

void TestAdminServer::initSaysWhyThereIsNoDatabase_data()
{
    QTest::addColumn<bool>("isAway");
    QTest::addColumn<bool>("isShut"); // they are not let in where databases are made
    QTest::addColumn<QByteArray>("told");
    QTest::newRow("no server") << true << false << QByteArray("no connection to the database");
    QTest::newRow("no right") << false << false << QByteArray("may not make the database");
    QTest::newRow("no way") << false << true << QByteArray("cannot make it on the server");
}

void TestAdminServer::initSaysWhyThereIsNoDatabase()
{
    QFETCH(bool, isAway);
    QFETCH(bool, isShut);
    QFETCH(QByteArray, told);
    makeAccount();
    QByteArray ini = withAccount(iniWith(QStringLiteral("name"), m_other));
    if (isAway)
        ini.replace("port = " + QByteArray::number(m_place->settings().port), "port = 1");
    if (isShut)
        runOnServer(QStringLiteral("REVOKE CONNECT ON DATABASE postgres FROM PUBLIC"));
    m_sandbox->write(QLatin1String(Ini), ini);
    const AdminRun run = m_sandbox->init();
    QVERIFY2(run.code == 1, run.all());
    QVERIFY2(run.errors.contains(told), run.all());
    if (!isAway)
        QVERIFY2(run.errors.contains(m_other.toUtf8()) && run.errors.contains(m_account.toUtf8()),
                 run.all());
    QVERIFY2(!run.errors.contains("let-me-in"), run.all());
}

void TestAdminServer::initSaysThatItMayNotMakeTables()
{
    makeAccount();
    runOnServer(QStringLiteral("REVOKE CREATE ON SCHEMA public FROM public"));
    m_sandbox->write(QLatin1String(Ini), withAccount(m_place->section()));
    const AdminRun run = m_sandbox->init();
    QVERIFY2(run.code == 1, run.all());
    QVERIFY2(run.errors.contains("has no right to") && run.errors.contains("schema public"),
             run.all());
    QCOMPARE(PlainConnection(m_place->settings()).tables(), QStringList());
}

void TestAdminServer::withoutADatabaseInitIsNamed()
{
    for (const QString &name : {m_other, m_place->settings().name}) { // none, and an empty one
        m_sandbox->write(QLatin1String(Ini), iniWith(QStringLiteral("name"), name));
        const AdminRun run = m_sandbox->run({QStringLiteral("status")});
        QVERIFY2(run.code == 1, run.all());
        QVERIFY2(run.errors.contains("kodms-admin init") && run.errors.contains(name.toUtf8()),
                 run.all());
    }
}

void TestAdminServer::backupsAreTheServersOwn()
{
    m_sandbox->write(QLatin1String(Ini), m_place->section());
    QCOMPARE(m_sandbox->init().code, 0);
    const QString file = m_sandbox->path(QStringLiteral("backup"));
    const AdminRun run = m_sandbox->run({QStringLiteral("backup"), file});
    QVERIFY2(run.code == 1, run.all());
    QVERIFY2(!run.errors.isEmpty() && !QFileInfo::exists(file), run.all());
}

KODMS_TEST_MAIN(TestAdminServer, QCoreApplication)
#include "TestAdminServer.moc"
