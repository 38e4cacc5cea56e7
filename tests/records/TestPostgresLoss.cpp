// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Dialect.h"
#include "services/records/Transaction.h"
#include "tests/records/support/Failures.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QTest>

#include <memory>
#include <optional>

using namespace KODMS::Services;
using KODMS::Tests::failureOf;
using KODMS::Tests::PlainConnection;
using KODMS::Tests::TempDatabase;

namespace {

const QString addPerson = QStringLiteral("INSERT INTO users (login_name, real_name, create_time) "
                                         "VALUES ('%1', '%1', '2026-11-21T00:00:00.000Z')");

} // namespace

/// The server ends the connection, which nobody hears of before the next statement.
class TestPostgresLoss : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theNextStatementMakesTheConnectionAnew();
    void aKeptStatementIsPreparedAgain();
    void aStatementThatWasBoundRunsOnTheNewConnection_data();
    void aStatementThatWasBoundRunsOnTheNewConnection();
    void aTransactionBeginsOnTheNewConnection();
    void aTransactionThatLosesItsConnectionFailsWhole();
    void aResultThatWasNotReadIsLost();
    void aStatementMayGoAfterItsConnection();
    void theStatementTimeoutOutlivesTheConnection();
    void aChangeIsNeverMadeTwice();
    void aServerThatStaysAwayIsTold();
    void aStatementTheServerForgotIsPreparedAnew();
    void aStatementWhoseTableHasChangedIsPreparedAnew();

private:
    /// Ends every connection to the database but the one that asks for it.
    void cut() const;
    int people();

    std::optional<TempDatabase> m_database;
    std::unique_ptr<PlainConnection> m_plain;
};

void TestPostgresLoss::init()
{
    m_database.emplace();
    m_plain = std::make_unique<PlainConnection>(m_database->settings());
}

void TestPostgresLoss::cleanup()
{
    m_plain.reset();
    m_database.reset();
}

void TestPostgresLoss::cut() const
{
    // The answer comes before the connections are gone, and they need not all be idle.
    m_plain->run(QStringLiteral("SELECT pg_terminate_backend(pid, 30000) FROM pg_stat_activity "
                                "WHERE datname = current_database() AND pid <> pg_backend_pid()"));
}

int TestPostgresLoss::people()
{
    SqlQuery query = (*m_database)->prepare(QStringLiteral("SELECT count(*) AS n FROM users"));
    query.exec().next();
    return query.number("n");
}

void TestPostgresLoss::theNextStatementMakesTheConnectionAnew()
{
    const int generation = (*m_database)->generation();
    QCOMPARE(people(), 0);
    cut();
    QCOMPARE(people(), 0);
    QCOMPARE((*m_database)->generation(), generation + 1);
    cut();
    (*m_database)->run(QStringLiteral("SELECT 1"));
    QCOMPARE((*m_database)->generation(), generation + 2);
}

void TestPostgresLoss::aKeptStatementIsPreparedAgain()
{
    Database &database = **m_database;
    database.query("count_flows").exec();
    database.query("select_all_users").exec();
    cut();
    SqlQuery users = database.query("select_all_users");
    QVERIFY(!users.exec().next());
    SqlQuery flows = database.query("count_flows");
    QVERIFY(flows.exec().next());
    QCOMPARE(flows.number("total"), 0);
}

void TestPostgresLoss::aStatementThatWasBoundRunsOnTheNewConnection_data()
{
    QTest::addColumn<QString>("statement");
    QTest::newRow("by name") << QStringLiteral("SELECT :a || :b || :a AS text");
    QTest::newRow("by place") << QStringLiteral("SELECT CAST(? AS TEXT) || ? || ? AS text");
}

void TestPostgresLoss::aStatementThatWasBoundRunsOnTheNewConnection()
{
    QFETCH(QString, statement);
    SqlQuery query = (*m_database)->prepare(statement);
    if (statement.contains(QLatin1Char(':')))
        query.bind(":a", QStringLiteral("it's ")).bind(":b", QStringLiteral("深圳 "));
    else
        query.bind(0, QStringLiteral("it's "))
            .bind(1, QStringLiteral("深圳 "))
            .bind(2, QStringLiteral("it's "));
    cut();
    QVERIFY(query.exec().next());
    QCOMPARE(query.text("text"), QStringLiteral("it's 深圳 it's "));
}

void TestPostgresLoss::aTransactionBeginsOnTheNewConnection()
{
    Database &database = **m_database;
    SqlQuery kept = database.query("select_all_users");
    cut();
    {
        Transaction transaction(database);
        database.run(addPerson.arg(QStringLiteral("li")));
        QVERIFY(kept.exec().next()); // one of the old connection
        transaction.commit();
    }
    QCOMPARE(people(), 1);
}

void TestPostgresLoss::aTransactionThatLosesItsConnectionFailsWhole()
{
    Database &database = **m_database;
    {
        Transaction transaction(database);
        database.run(addPerson.arg(QStringLiteral("li")));
        SqlQuery other = database.prepare(QStringLiteral("SELECT 1 AS one"));
        cut();
        QCOMPARE(failureOf([&] { other.exec(); }), SqlError::Kind::Lost);
        QCOMPARE(failureOf([&] { database.query("select_all_users").exec(); }),
                 SqlError::Kind::Lost); // no new one within it
        QVERIFY(failureOf([&] { transaction.commit(); }).has_value());
    }
    QCOMPARE(people(), 0);
    database.run(addPerson.arg(QStringLiteral("wang")));
    QCOMPARE(people(), 1);
}

void TestPostgresLoss::aResultThatWasNotReadIsLost()
{
    Database &database = **m_database;
    SqlQuery rows = database.prepare(QStringLiteral("SELECT 1 AS one UNION ALL SELECT 2"));
    QVERIFY(rows.exec().next());
    QCOMPARE(rows.number("one"), 1);
    cut();
    QCOMPARE(people(), 0);
    QCOMPARE(failureOf([&] { rows.next(); }), SqlError::Kind::Lost);
    QCOMPARE(failureOf([&] { rows.number("one"); }), SqlError::Kind::Lost);
    QVERIFY(rows.exec().next()); // and here it is again
    QCOMPARE(rows.number("one"), 1);
}

void TestPostgresLoss::aStatementMayGoAfterItsConnection()
{
    Database &database = **m_database;
    {
        SqlQuery passing = database.prepare(QStringLiteral("SELECT 1 AS one"));
        SqlQuery kept = database.query("count_flows");
        passing.exec();
        kept.exec();
        cut();
        QCOMPARE(people(), 0);
    }
    SqlQuery kept = database.query("count_flows");
    QVERIFY(kept.exec().next());
}

void TestPostgresLoss::theStatementTimeoutOutlivesTheConnection()
{
    (*m_database)->dialect().setStatementTimeout(100);
    cut();
    QCOMPARE(people(), 0);
    QCOMPARE(failureOf([&] { (*m_database)->run(QStringLiteral("SELECT pg_sleep(60)")); }),
             SqlError::Kind::Timeout);
}

/// A change that ends with its connection may have been made or not: it is told, never
/// tried again of itself.
void TestPostgresLoss::aChangeIsNeverMadeTwice()
{
    const QString suicide =
        QStringLiteral("INSERT INTO users (login_name, real_name, create_time) "
                       "SELECT 'li', 'li', 't' FROM pg_terminate_backend(pg_backend_pid()), "
                       "pg_sleep(30)");
    QCOMPARE(failureOf([&] { (*m_database)->run(suicide); }), SqlError::Kind::Lost);
    QCOMPARE(people(), 0);
}

void TestPostgresLoss::aServerThatStaysAwayIsTold()
{
    auto settings = m_database->settings();
    const QString gate =
        QStringLiteral("ALTER DATABASE %1 WITH ALLOW_CONNECTIONS %2").arg(settings.name);
    settings.name = QStringLiteral("postgres");
    const PlainConnection server(settings);
    server.run(gate.arg(QStringLiteral("false")));
    cut();
    QCOMPARE(failureOf([&] { people(); }), SqlError::Kind::Lost);
    server.run(gate.arg(QStringLiteral("true")));
    QCOMPARE(people(), 0);
}

/// What stands between the desk and the server may lead each transaction elsewhere.
void TestPostgresLoss::aStatementTheServerForgotIsPreparedAnew()
{
    Database &database = **m_database;
    const int generation = database.generation();
    SqlQuery query = database.prepare(QStringLiteral("SELECT CAST(? AS TEXT) AS text"));
    query.bind(0, QStringLiteral("深圳"));
    database.run(QStringLiteral("DEALLOCATE ALL"));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("Unable to free statement")));
    QVERIFY(query.exec().next());
    QCOMPARE(query.text("text"), QStringLiteral("深圳"));
    SqlQuery change =
        database.prepare(QStringLiteral("UPDATE change_log SET kind = 9 WHERE kind = 9"));
    database.run(QStringLiteral("DEALLOCATE ALL"));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("Unable to free statement")));
    change.exec();
    QCOMPARE(database.generation(), generation);
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("Unable to free statement")));
    Transaction transaction(database);
    SqlQuery inside = database.prepare(QStringLiteral("SELECT 1 AS one"));
    database.run(QStringLiteral("DEALLOCATE ALL"));
    QCOMPARE(failureOf([&] { inside.exec(); }), SqlError::Kind::Other);
}

void TestPostgresLoss::aStatementWhoseTableHasChangedIsPreparedAnew()
{
    SqlQuery query = (*m_database)->prepare(QStringLiteral("SELECT * FROM users"));
    query.exec();
    m_plain->run(QStringLiteral("ALTER TABLE users ADD COLUMN later INTEGER"));
    QVERIFY(!query.exec().next());
}

KODMS_TEST_MAIN(TestPostgresLoss, QCoreApplication)
#include "TestPostgresLoss.moc"
