// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Database.h"
#include "services/records/Dialect.h"
#include "services/records/Transaction.h"
#include "tests/records/support/Failures.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/support/TestMain.h"

#include <QElapsedTimer>
#include <QSqlDatabase>
#include <QTest>

#include <atomic>
#include <thread>

using namespace KODMS::Services;
using KODMS::Tests::failureOf;
using KODMS::Tests::TempDatabase;

namespace {

int countOf(Database &database, const char *table)
{
    SqlQuery query =
        database.prepare(QStringLiteral("SELECT count(*) AS n FROM ") + QLatin1String(table));
    query.exec().next();
    return query.number("n");
}

void addEvent(Database &database, const QString &action)
{
    SqlQuery query = database.prepare(
        QStringLiteral("INSERT INTO events (create_time, action) VALUES ('t', :action)"));
    query.bind(":action", action).exec();
}

const QString endless = QStringLiteral(
    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT count(*) AS c FROM n");

} // namespace

/// The connection, its settings, statements and transactions.
class TestDatabase : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theConnectionIsForgottenWithTheObject();
    void anUnknownStatementOrColumnIsAnError();
    void textsAreNeverNullUnlessSaidSo();
    void awkwardTextsComeBackUnchanged();
    void aTransactionRollsBackUnlessCommitted();
    void anInnerTransactionCanBeUndoneAlone();
    void aReadingTransactionCannotBeginToWrite();
    void aReaderSeesOneState();
    void aResultThatIsNotReadToItsEndHoldsNothing();
    void foreignKeysAreKept();
    void aSecondWriterWaitsForTheFirst();
    void aSecondWriterGivesUpAfterTheTimeOut();
    void aLongStatementIsEnded();
};

void TestDatabase::theConnectionIsForgottenWithTheObject()
{
    const QStringList before = QSqlDatabase::connectionNames();
    {
        TempDatabase database;
        QCOMPARE(QSqlDatabase::connectionNames().size(), before.size() + 1);
    }
    QCOMPARE(QSqlDatabase::connectionNames(), before);
    failureOf(
        [] { Database database(TempDatabase::settingsFor(QStringLiteral("/nowhere/x.db"))); });
    QCOMPARE(QSqlDatabase::connectionNames(), before);
}

void TestDatabase::anUnknownStatementOrColumnIsAnError()
{
    TempDatabase database;
    QVERIFY(failureOf([&] { database->query("no_such_statement"); }).has_value());
    QVERIFY(failureOf([&] { database->prepare(QStringLiteral("SELEKT 1")); }).has_value());
    SqlQuery query = database->prepare(QStringLiteral("SELECT 1 AS one"));
    query.exec().next();
    QCOMPARE(query.number("one"), 1);
    QVERIFY(failureOf([&] { query.number("two"); }).has_value());
}

void TestDatabase::textsAreNeverNullUnlessSaidSo()
{
    TempDatabase database;
    SqlQuery query = database->prepare(QStringLiteral("SELECT :text AS text, :none AS none"));
    query.bind(":text", QString()).bind(":none", QVariant()).exec();
    QVERIFY(query.next());
    QVERIFY(!query.isNull("text"));
    QVERIFY(query.isNull("none"));
    QCOMPARE(query.text("none"), QString());
    query.bind(":text", QStringLiteral("again")).exec();
    QVERIFY(query.next());
    QCOMPARE(query.text("text"), QStringLiteral("again"));
}

void TestDatabase::awkwardTextsComeBackUnchanged()
{
    TempDatabase database;
    const QStringList texts{QStringLiteral("'; DROP TABLE events; --"), QStringLiteral("😀 深圳 é"),
                            QStringLiteral(":action ?1 %_\\"), QString(1 << 20, QLatin1Char('m'))};
    for (const QString &text : texts)
        addEvent(*database, text);
    SqlQuery query = database->prepare(QStringLiteral("SELECT action FROM events ORDER BY id"));
    query.exec();
    for (const QString &text : texts) {
        QVERIFY(query.next());
        QCOMPARE(query.text("action"), text);
    }
}

void TestDatabase::aTransactionRollsBackUnlessCommitted()
{
    TempDatabase database;
    {
        Transaction transaction(*database);
        addEvent(*database, QStringLiteral("lost"));
    }
    QCOMPARE(countOf(*database, "events"), 0);
    {
        Transaction transaction(*database);
        addEvent(*database, QStringLiteral("kept"));
        transaction.commit();
    }
    QCOMPARE(countOf(*database, "events"), 1);
}

void TestDatabase::anInnerTransactionCanBeUndoneAlone()
{
    TempDatabase database;
    {
        Transaction outer(*database);
        addEvent(*database, QStringLiteral("outer"));
        {
            Transaction inner(*database);
            addEvent(*database, QStringLiteral("undone"));
        }
        {
            Transaction inner(*database);
            addEvent(*database, QStringLiteral("inner"));
            inner.commit();
        }
        QCOMPARE(countOf(*database, "events"), 2);
        outer.commit();
    }
    QCOMPARE(countOf(*database, "events"), 2);
}

void TestDatabase::aReadingTransactionCannotBeginToWrite()
{
    TempDatabase database;
    Transaction reading(*database, Transaction::Purpose::Read);
    QVERIFY(failureOf([&] { Transaction writing(*database); }).has_value());
    Transaction readingMore(*database, Transaction::Purpose::Read);
}

void TestDatabase::aReaderSeesOneState()
{
    TempDatabase database;
    Database other(database.settings());
    Transaction reading(*database, Transaction::Purpose::Read);
    QCOMPARE(countOf(*database, "events"), 0);
    addEvent(other, QStringLiteral("meanwhile"));
    QCOMPARE(countOf(*database, "events"), 0);
    reading.commit();
    QCOMPARE(countOf(*database, "events"), 1);
}

void TestDatabase::aResultThatIsNotReadToItsEndHoldsNothing()
{
    TempDatabase database;
    addEvent(*database, QStringLiteral("one"));
    addEvent(*database, QStringLiteral("two"));
    {
        SqlQuery query = database->query("count_tables");
        query.exec();
        SqlQuery sameAgain = database->query("count_tables"); // while the first is at work
        sameAgain.exec();
        QVERIFY(query.next());
        QVERIFY(sameAgain.next());
    }
    {
        SqlQuery query = database->prepare(QStringLiteral("SELECT action FROM events"));
        query.exec().next();
    }
    if (!KODMS::Tests::TestDatabase::isServer())
        database->run(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    database->run(QStringLiteral("DROP TABLE events"));
}

void TestDatabase::foreignKeysAreKept()
{
    TempDatabase database;
    QCOMPARE(failureOf([&] {
                 database->run(QStringLiteral("INSERT INTO orders (flow_id, create_time) "
                                              "VALUES (77, 't')"));
             }),
             SqlError::Kind::Constraint);
}

void TestDatabase::aSecondWriterWaitsForTheFirst()
{
    TempDatabase database;
    std::atomic<bool> hasBegun{false};
    std::thread first([&] {
        Database other(database.settings());
        Transaction transaction(other);
        addEvent(other, QStringLiteral("first"));
        hasBegun = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        transaction.commit();
    });
    while (!hasBegun)
        std::this_thread::yield();
    {
        // It has read before, which would make a late upgrade to writing fail at once.
        QCOMPARE(countOf(*database, "events"), 0);
        Transaction transaction(*database);
        QCOMPARE(countOf(*database, "events"), 1);
        addEvent(*database, QStringLiteral("second"));
        transaction.commit();
    }
    first.join();
    QCOMPARE(countOf(*database, "events"), 2);
}

void TestDatabase::aSecondWriterGivesUpAfterTheTimeOut()
{
    TempDatabase database;
    auto impatient = database.settings();
    impatient.busyTimeoutMs = 200;
    Database other(impatient);
    Transaction first(*database);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(failureOf([&] { Transaction second(other); }), SqlError::Kind::Busy);
    QVERIFY(timer.elapsed() >= 150);
    QVERIFY(timer.elapsed() < 20000);
    addEvent(*database, QStringLiteral("kept"));
    first.commit();
    Transaction later(other);
    QCOMPARE(countOf(other, "events"), 1);
}

void TestDatabase::aLongStatementIsEnded()
{
    TempDatabase database;
    database->dialect().setStatementTimeout(100);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(failureOf([&] { database->prepare(endless).exec(); }), SqlError::Kind::Timeout);
    QVERIFY(timer.elapsed() >= 90);
    QVERIFY(timer.elapsed() < 20000);
    QCOMPARE(countOf(*database, "events"), 0); // the connection is as good as before
    {
        Transaction transaction(*database);
        addEvent(*database, QStringLiteral("undone"));
        QCOMPARE(failureOf([&] { database->prepare(endless).exec(); }), SqlError::Kind::Timeout);
    }
    QCOMPARE(countOf(*database, "events"), 0);
}

KODMS_TEST_MAIN(TestDatabase, QCoreApplication)
#include "TestDatabase.moc"
