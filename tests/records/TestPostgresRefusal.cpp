// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/PostgresDialect.h"
#include "tests/records/support/CuttingRelay.h"
#include "tests/records/support/Failures.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QSqlError>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>

using namespace KODMS::Services;
using KODMS::Tests::CuttingRelay;
using KODMS::Tests::failureOf;
using KODMS::Tests::PlainConnection;
using KODMS::Tests::TempDatabase;
using KODMS::Tests::TestDatabase;

Q_DECLARE_METATYPE(SqlError::Kind)

namespace {

/// What came of opening a database that cannot be opened.
std::optional<SqlError> refusal(const DatabaseSettings &settings, Database::Open mode)
{
    try {
        const Database database(settings, mode);
        return std::nullopt;
    } catch (const SqlError &error) {
        return error;
    }
}

/// A database that is always there.
DatabaseSettings server()
{
    return TestDatabase::settingsAt(QStringLiteral("postgres"));
}

} // namespace

/// What a server says no to: which is told at once, with its reason, and not waited for.
class TestPostgresRefusal : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theTextTellsWhetherWaitingHelps_data();
    void theTextTellsWhetherWaitingHelps();
    void whatWaitingDoesNotMendIsToldAtOnce_data();
    void whatWaitingDoesNotMendIsToldAtOnce();
    void aServerThatIsAwayIsAskedMoreAndMoreSeldom();
    void whoHasWaitedInVainIsNotKeptWaitingAgain();
    void aPasswordFileThatIsOfNoUseIsNamed_data();
    void aPasswordFileThatIsOfNoUseIsNamed();
    void whoMayNotMakeADatabaseIsTold();
    void aMissingDatabaseIsMadeOnlyWhenAsked();
    void aDatabaseOfAnotherKindIsRefused_data();
    void aDatabaseOfAnotherKindIsRefused();

private:
    void run(const QString &statement) const { m_server->run(statement); }

    /// Ends every connection to the test's database.
    void cut() const;
    /// An account of this test's own that may sign in.
    DatabaseSettings withAccount();
    void setPassword(const QByteArray &content) const;

    std::optional<TempDatabase> m_database;
    std::unique_ptr<PlainConnection> m_server; ///< in another database of the server
    QTemporaryDir m_dir;
    QString m_account;
};

void TestPostgresRefusal::init()
{
    m_database.emplace();
    m_server = std::make_unique<PlainConnection>(server());
    m_account = m_database->settings().name + QStringLiteral("_person");
}

void TestPostgresRefusal::cleanup()
{
    m_database.reset();
    run(QStringLiteral("DROP ROLE IF EXISTS %1").arg(m_account));
    m_server.reset();
}

void TestPostgresRefusal::cut() const
{
    run(QStringLiteral("SELECT pg_terminate_backend(pid, 30000) FROM pg_stat_activity "
                       "WHERE datname = '%1'")
            .arg(m_database->settings().name));
}

void TestPostgresRefusal::setPassword(const QByteArray &content) const
{
    QFile file(m_dir.filePath(QStringLiteral("password")));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(file.fileName()));
}

DatabaseSettings TestPostgresRefusal::withAccount()
{
    run(QStringLiteral("CREATE ROLE %1 LOGIN PASSWORD 'let-me-in'").arg(m_account));
    setPassword("let-me-in\n");
    DatabaseSettings settings = m_database->settings();
    settings.user = m_account;
    settings.passwordFile = m_dir.filePath(QStringLiteral("password"));
    settings.sslMode = QStringLiteral("disable"); // one visit an attempt
    return settings;
}

void TestPostgresRefusal::theTextTellsWhetherWaitingHelps_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<SqlError::Kind>("kind");
    const auto row = [](const char *text, SqlError::Kind kind) {
        QTest::newRow(text) << QStringLiteral("connection to server at \"192.0.2.20\", port 5432 "
                                              "failed: %1\n")
                                   .arg(QString::fromUtf8(text))
                            << kind;
    };
    using Kind = SqlError::Kind;
    row("FATAL:  password authentication failed for user \"kodms\"", Kind::Refused);
    row("FATAL:  Peer authentication failed for user \"kodms\"", Kind::Refused);
    row("fe_sendauth: no password supplied", Kind::Refused);
    row("FATAL:  no pg_hba.conf entry for host \"192.0.2.7\", user \"kodms\", database \"kodms\"",
        Kind::Refused);
    row("FATAL:  role \"kodms\" does not exist", Kind::Refused);
    row("FATAL:  role \"kodms\" is not permitted to log in", Kind::Refused);
    row("FATAL:  permission denied for database \"kodms\"", Kind::Refused);
    row("致命错误:  用户 \"kodms\" Password 认证失败", Kind::Refused);
    row("致命错误:  角色 \"kodms\" 不存在", Kind::Refused);
    row("FATAL:  database \"kodms\" does not exist", Kind::Missing);
    row("致命错误:  数据库 \"kodms\" 不存在", Kind::Missing);
    row("server does not support SSL, but SSL was required", Kind::Unfit);
    row("SSL error: certificate verify failed", Kind::Unfit);
    row("Connection refused", Kind::Lost);
    row("timeout expired", Kind::Lost);
    row("FATAL:  the database system is starting up", Kind::Lost);
    row("FATAL:  the database system is shutting down", Kind::Lost);
    row("FATAL:  sorry, too many clients already", Kind::Lost);
    row("FATAL:  database \"kodms\" is not currently accepting connections", Kind::Lost);
    row("FATAL:  too many connections for role \"kodms\"", Kind::Lost);
}

void TestPostgresRefusal::theTextTellsWhetherWaitingHelps()
{
    QFETCH(QString, text);
    QFETCH(SqlError::Kind, kind);
    QCOMPARE(PostgresDialect().kindOf(QSqlError({}, text, QSqlError::ConnectionError)), kind);
    // Of a statement, such words are its own affair.
    QCOMPARE(PostgresDialect().kindOf(QSqlError({}, text, QSqlError::StatementError)),
             SqlError::Kind::Lost);
}

void TestPostgresRefusal::whatWaitingDoesNotMendIsToldAtOnce_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<QString>("back"); // so that the database can be found and goes
    QTest::addColumn<SqlError::Kind>("kind");
    QTest::newRow("another password") << QStringLiteral("ALTER ROLE %1_person PASSWORD 'changed'")
                                      << QString() << SqlError::Kind::Refused;
    QTest::newRow("an account that was closed")
        << QStringLiteral("ALTER ROLE %1_person NOLOGIN") << QString() << SqlError::Kind::Refused;
    QTest::newRow("another name") << QStringLiteral("ALTER DATABASE %1 RENAME TO %1_old")
                                  << QStringLiteral("ALTER DATABASE %1_old RENAME TO %1")
                                  << SqlError::Kind::Missing;
}

void TestPostgresRefusal::whatWaitingDoesNotMendIsToldAtOnce()
{
    QFETCH(QString, change);
    QFETCH(QString, back);
    QFETCH(SqlError::Kind, kind);
    DatabaseSettings settings = withAccount();
    const QString name = settings.name;
    const CuttingRelay relay(settings.host, settings.port);
    settings.host = QStringLiteral("127.0.0.1");
    settings.port = relay.port();
    Database database(settings);
    database.run(QStringLiteral("SELECT 1"));
    cut();
    run(change.arg(name));
    const int visits = relay.visits();
    const auto failure = failureOf([&] { database.run(QStringLiteral("SELECT 1")); });
    if (!back.isEmpty())
        run(back.arg(name));
    QCOMPARE(failure, std::optional(kind));
    QCOMPARE(relay.visits(), visits + 1);
}

/// Its pauses: 0.1, 0.2, 0.4, 0.8, 0.8 seconds, and what is left of the first three.
void TestPostgresRefusal::aServerThatIsAwayIsAskedMoreAndMoreSeldom()
{
    constexpr int mostAttempts = 7;
    DatabaseSettings settings = withAccount();
    CuttingRelay relay(settings.host, settings.port);
    settings.host = QStringLiteral("127.0.0.1");
    settings.port = relay.port();
    Database database(settings);
    relay.shut();
    cut();
    const int visits = relay.visits();
    QCOMPARE(failureOf([&] { database.run(QStringLiteral("SELECT 1")); }),
             std::optional(SqlError::Kind::Lost));
    QVERIFY2(relay.visits() > visits && relay.visits() <= visits + mostAttempts,
             qPrintable(QString::number(relay.visits() - visits)));
    relay.letIn();
    database.run(QStringLiteral("SELECT 1"));
}

/// As somebody does who types on: each letter is a search.
void TestPostgresRefusal::whoHasWaitedInVainIsNotKeptWaitingAgain()
{
    DatabaseSettings settings = withAccount();
    CuttingRelay relay(settings.host, settings.port);
    settings.host = QStringLiteral("127.0.0.1");
    settings.port = relay.port();
    Database database(settings);
    const auto fails = [&database] {
        return failureOf([&] { database.run(QStringLiteral("SELECT 1")); }) == SqlError::Kind::Lost;
    };
    for (int outage = 0; outage < 2; ++outage) {
        relay.shut();
        cut();
        const int before = relay.visits();
        QVERIFY(fails());
        QVERIFY(relay.visits() > before + 1); // the first one waits, in each outage
        const int visits = relay.visits();
        for (int letter = 1; letter <= 8; ++letter) {
            QVERIFY(fails());
            QCOMPARE(relay.visits(), visits + letter);
        }
        relay.letIn();
        database.run(QStringLiteral("SELECT 1"));
    }
}

void TestPostgresRefusal::aPasswordFileThatIsOfNoUseIsNamed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("told");
    QTest::newRow("not there") << QStringLiteral("nowhere") << QByteArray()
                               << QStringLiteral("is not there");
    QTest::newRow("not a file") << QString() << QByteArray() << QStringLiteral("cannot be read");
    QTest::newRow("empty") << QStringLiteral("password") << QByteArray()
                           << QStringLiteral("is empty");
    QTest::newRow("without a first line")
        << QStringLiteral("password") << QByteArray("\r\nlet-me-in\n")
        << QStringLiteral("is empty");
}

void TestPostgresRefusal::aPasswordFileThatIsOfNoUseIsNamed()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFETCH(QString, told);
    DatabaseSettings settings = m_database->settings();
    settings.passwordFile = m_dir.filePath(name);
    setPassword(content);
    for (const auto mode : {Database::Open::Existing, Database::Open::Create}) {
        const auto error = refusal(settings, mode);
        QVERIFY(error);
        QCOMPARE(error->kind(), SqlError::Kind::Unfit);
        QVERIFY2(error->logText().contains(told), qPrintable(error->logText()));
        for (const QString &text : {error->logText(), error->userText(), error->detailedText()}) {
            QVERIFY2(text.contains(settings.passwordFile), qPrintable(text));
            QVERIFY2(!text.contains(QStringLiteral("let-me-in")), qPrintable(text));
        }
    }
}

void TestPostgresRefusal::whoMayNotMakeADatabaseIsTold()
{
    DatabaseSettings settings = withAccount();
    settings.name += QStringLiteral("_other");
    const auto missing = refusal(settings, Database::Open::Existing);
    QVERIFY(missing);
    QCOMPARE(missing->kind(), SqlError::Kind::Missing);
    const auto forbidden = refusal(settings, Database::Open::Create);
    QVERIFY(forbidden);
    QCOMPARE(forbidden->kind(), SqlError::Kind::Forbidden);
    const QString text = forbidden->userText();
    QVERIFY2(text.contains(m_account) && text.contains(settings.name), qPrintable(text));
}

void TestPostgresRefusal::aMissingDatabaseIsMadeOnlyWhenAsked()
{
    auto settings = m_database->settings();
    settings.name += QStringLiteral(" \"made\" '记录'");
    QCOMPARE(failureOf([&] { Database database(settings); }),
             std::optional(SqlError::Kind::Missing));
    {
        Database database(settings, Database::Open::Create);
        SqlQuery query = database.prepare(
            QStringLiteral("SELECT datcollate AS a, datctype AS b FROM pg_database "
                           "WHERE datname = current_database()"));
        query.exec().next();
        QCOMPARE(query.text("a"), QStringLiteral("C.UTF-8"));
        QCOMPARE(query.text("b"), QStringLiteral("C.UTF-8"));
    }
    Database again(settings, Database::Open::Create);
    QString name = settings.name;
    run(QStringLiteral("DROP DATABASE \"%1\" WITH (FORCE)")
            .arg(name.replace(QLatin1Char('"'), QStringLiteral("\"\""))));
}

void TestPostgresRefusal::aDatabaseOfAnotherKindIsRefused_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("told"); // empty: taken
    const auto row = [](const char *name, const char *kind, const char *told) {
        QTest::newRow(name) << QString::fromLatin1(kind) << QString::fromLatin1(told);
    };
    row("as init makes it", "ENCODING 'UTF8' LC_COLLATE 'C.UTF-8' LC_CTYPE 'C.UTF-8'", "");
    row("byte order said plainly", "ENCODING 'UTF8' LC_COLLATE 'C' LC_CTYPE 'C.UTF-8'", "");
    row("knows Latin letters only", "ENCODING 'UTF8' LC_COLLATE 'C' LC_CTYPE 'C'",
        "character type C");
    row("another encoding", "ENCODING 'LATIN1' LC_COLLATE 'C' LC_CTYPE 'C'", "encoding LATIN1");
    row("no encoding", "ENCODING 'SQL_ASCII' LC_COLLATE 'C' LC_CTYPE 'C'", "encoding SQL_ASCII");
    constexpr int firstOfProviders = 150000;
    const QString asked = QStringLiteral("SHOW server_version_num");
    if (PlainConnection(server()).texts(asked).value(0).toInt() >= firstOfProviders)
        row("the order of a language",
            "ENCODING 'UTF8' LC_COLLATE 'C' LC_CTYPE 'C.UTF-8' LOCALE_PROVIDER icu ICU_LOCALE 'en'",
            "locale provider icu");
}

void TestPostgresRefusal::aDatabaseOfAnotherKindIsRefused()
{
    QFETCH(QString, kind);
    QFETCH(QString, told);
    auto settings = m_database->settings();
    settings.name += QStringLiteral("_other");
    run(QStringLiteral("CREATE DATABASE %1 TEMPLATE template0 %2").arg(settings.name, kind));
    const auto error = refusal(settings, Database::Open::Create);
    run(QStringLiteral("DROP DATABASE %1 WITH (FORCE)").arg(settings.name));
    QCOMPARE(error.has_value(), !told.isEmpty());
    if (!error)
        return;
    QCOMPARE(error->kind(), SqlError::Kind::Unfit);
    const QString text = error->driverText();
    QVERIFY2(text.contains(told), qPrintable(text));
    for (const QString &part :
         {settings.name, QStringLiteral("C.UTF-8"), told.section(QLatin1Char(' '), -1)}) {
        QVERIFY2(text.contains(part), qPrintable(text));
        QVERIFY2(error->detailedText().contains(part), qPrintable(error->detailedText()));
    }
}

KODMS_TEST_MAIN(TestPostgresRefusal, QCoreApplication)
#include "TestPostgresRefusal.moc"
