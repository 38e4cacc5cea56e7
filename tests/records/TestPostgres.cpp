// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/DatabaseSnapshot.h"
#include "services/records/Dialect.h"
#include "services/records/RecoveryPoint.h"
#include "services/records/Transaction.h"
#include "tests/records/support/Failures.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/ServersImpatience.h"
#include "tests/support/TestMain.h"

#include <QTest>
#include <QThread>

#include <memory>

using namespace KODMS::Services;
using KODMS::Tests::failureOf;
using KODMS::Tests::PlainConnection;
using KODMS::Tests::ServersImpatience;
using KODMS::Tests::TempDatabase;

namespace {

const QString addPerson = QStringLiteral("INSERT INTO users (login_name, real_name, create_time) "
                                         "VALUES ('%1', '%1', '2026-11-21T00:00:00.000Z')");

int numberOf(Database &database, const char *statement)
{
    SqlQuery query = database.prepare(QString::fromLatin1(statement));
    query.exec().next();
    return query.number("n");
}

int peopleIn(Database &database)
{
    return numberOf(database, "SELECT count(*) AS n FROM users");
}

} // namespace

/// What is particular to records on a server.
class TestPostgres : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { m_shared = std::make_unique<TempDatabase>(); }

    void cleanupTestCase() { m_shared.reset(); }

    void theConnectionIsSetForDurableWork();
    void aWriterThatSaysNothingIsEnded();
    void aPatientConnectionIsNeverEnded();
    void aTextWithNulIsNeitherStoredNorFound();
    void hostileTextsAreFoundAsTheyStand_data();
    void hostileTextsAreFoundAsTheyStand();
    void aNumberLargerThanItsColumnEqualsNothing();
    void aChangeOutsideOfTransactionsWaitsForOtherWriters();
    void aShortStatementTimeoutDoesNotEndTheWait();
    void aDatabaseThatIsSetReadOnlyIsNotWritten();
    void afterAnErrorNothingIsCommitted();
    void aRecoveryPointLetsATransactionGoOn();
    void aLongResultIsReadRowByRow();
    void whatIsWrongWithTheDatabaseIsSaid();
    void aSnapshotSaysWhatToDoInstead();

private:
    std::unique_ptr<TempDatabase> m_shared; ///< for what needs no fresh one
};

void TestPostgres::theConnectionIsSetForDurableWork()
{
    TempDatabase &database = *m_shared;
    auto settings = database.settings();
    settings.busyTimeoutMs = 1234;
    settings.statementTimeoutMs = 5678;
    Database other(settings);
    const auto shown = [&other](const char *name) -> QString {
        SqlQuery query = other.prepare(
            QStringLiteral("SELECT current_setting('%1') AS shown").arg(QLatin1String(name)));
        query.exec().next();
        return query.text("shown");
    };
    QCOMPARE(shown("synchronous_commit"), QStringLiteral("on"));
    QCOMPARE(shown("lock_timeout"), QStringLiteral("1234ms"));
    QCOMPARE(shown("statement_timeout"), QStringLiteral("5678ms"));
    QCOMPARE(shown("application_name"), QStringLiteral("kodms"));
    QCOMPARE(shown("idle_in_transaction_session_timeout"), QStringLiteral("0"));
    Transaction writer(other);
    QCOMPARE(shown("idle_in_transaction_session_timeout"), QStringLiteral("5min"));
}

/// Whoever has the writers' lock and is heard of no more.
void TestPostgres::aWriterThatSaysNothingIsEnded()
{
    TempDatabase database;
    auto settings = database.settings();
    settings.silenceTimeoutMs = 200;
    Database silent(settings);
    const int process = numberOf(silent, "SELECT pg_backend_pid() AS n");
    const QString look = QStringLiteral("SELECT count(*) AS n FROM pg_stat_activity WHERE pid = ");
    const QByteArray isThere = (look + QString::number(process)).toLatin1();
    Transaction writer(silent);
    QTRY_COMPARE_WITH_TIMEOUT(numberOf(*database, isThere.constData()), 0, 60000);
    QCOMPARE(failureOf([&] { silent.run(addPerson.arg(QStringLiteral("li"))); }),
             SqlError::Kind::Lost);
}

/// Whatever the server's keeper has set for everybody.
void TestPostgres::aPatientConnectionIsNeverEnded()
{
    const ServersImpatience impatience(m_shared->settings());
    Database patient(m_shared->settings().patient());
    const auto expectNoLimits = [&patient] {
        QCOMPARE(numberOf(patient, "SELECT count(*) AS n FROM pg_settings WHERE setting <> '0' "
                                   "AND name IN ('statement_timeout', 'transaction_timeout', "
                                   "'idle_in_transaction_session_timeout', "
                                   "'idle_session_timeout')"),
                 0);
    };
    expectNoLimits();
    {
        const Transaction reader(patient, Transaction::Purpose::Read);
        QThread::msleep(3 * ServersImpatience::Milliseconds);
        expectNoLimits();
    }
    const Transaction writer(patient);
    QThread::msleep(3 * ServersImpatience::Milliseconds);
    expectNoLimits();
}

void TestPostgres::aTextWithNulIsNeitherStoredNorFound()
{
    TempDatabase database;
    const QString text = QStringLiteral("a%1b").arg(QChar(0));
    SqlQuery store = database->prepare(
        QStringLiteral("INSERT INTO events (create_time, action) VALUES ('t', :action)"));
    QCOMPARE(failureOf([&] { store.bind(":action", text); }), SqlError::Kind::Constraint);
    store.bind(":action", QStringLiteral("a")).exec();
    SqlQuery find =
        database->prepare(QStringLiteral("SELECT id FROM events WHERE action = :action"));
    QVERIFY(!find.bind(":action", text).exec().next());
    QVERIFY(find.bind(":action", QStringLiteral("a")).exec().next());
}

void TestPostgres::hostileTextsAreFoundAsTheyStand_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<bool>("isFound");
    const auto row = [](const char *name, const char *stored, const char *wanted, bool isFound) {
        QTest::newRow(name) << QString::fromUtf8(stored) << QString::fromUtf8(wanted) << isFound;
    };
    row("a quote", "it's", "'S", true);
    row("a statement", "x'; DROP TABLE users; --", "; drop", true);
    row("a backslash", "C:\\temp\\n", "\\TEMP\\", true);
    row("a backslash that is not there", "C:/temp", "\\", false);
    row("a percent sign", "100%", "0%", true);
    row("a percent sign for anything", "100", "1%0", false);
    row("an underscore", "a_b", "A_B", true);
    row("an underscore for anything", "acb", "a_b", false);
    row("a place for a value", ":name ?1 $1", "? :NAME", false);
    row("places for values", ":name ?1 $1", ":NAME ?1 $1", true);
    row("two dollar signs", "$$ body $$", "$$ B", true);
    row("Chinese", "深圳电路", "圳电", true);
    row("an emoji", "board 😀.tgz", "😀.TGZ", true);
    row("other letters in one case", "Ébène", "ébÈne", false);
    row("other letters in their case", "Ébène", "ÉBène", true);
    row("Greek and Kelvin", "Kσ", "kΣ", false);
    row("a dotted capital", "İI", "iI", false);
}

void TestPostgres::hostileTextsAreFoundAsTheyStand()
{
    QFETCH(QString, stored);
    QFETCH(QString, wanted);
    QFETCH(bool, isFound);
    TempDatabase &database = *m_shared;
    database->run(QStringLiteral("DELETE FROM events"));
    database->prepare(QStringLiteral("INSERT INTO events (create_time, action) VALUES ('t', ?)"))
        .bind(0, stored)
        .exec();
    QString bound;
    const QString test = database->dialect().containsText(QStringLiteral("action"), wanted, &bound);
    SqlQuery find = database->prepare(QStringLiteral("SELECT action FROM events WHERE ") + test);
    QCOMPARE(find.bind(0, bound).exec().next(), isFound);
    if (isFound)
        QCOMPARE(find.text("action"), stored);
}

void TestPostgres::aNumberLargerThanItsColumnEqualsNothing()
{
    TempDatabase &database = *m_shared;
    SqlQuery find =
        database->prepare(QStringLiteral("SELECT count(*) AS n FROM users WHERE id = ") +
                          database->dialect().boundNumber());
    find.bind(0, Q_INT64_C(1) << 40).exec();
    QVERIFY(find.next());
    QCOMPARE(find.number("n"), 0);
}

void TestPostgres::aChangeOutsideOfTransactionsWaitsForOtherWriters()
{
    TempDatabase database;
    auto settings = database.settings();
    settings.busyTimeoutMs = 100;
    Database impatient(settings);
    SqlQuery failures = impatient.query("delete_sign_in_failures");
    failures.bind(":login", QStringLiteral("li"));
    {
        Transaction writer(*database);
        QCOMPARE(failureOf([&] { failures.exec(); }), SqlError::Kind::Busy);
        QCOMPARE(failureOf([&] { impatient.run(addPerson.arg(QStringLiteral("li"))); }),
                 SqlError::Kind::Busy);
        QCOMPARE(peopleIn(impatient), 0); // who reads does not wait
    }
    failures.exec();
    impatient.run(addPerson.arg(QStringLiteral("li")));
    QCOMPARE(peopleIn(*database), 1);
}

void TestPostgres::aShortStatementTimeoutDoesNotEndTheWait()
{
    TempDatabase database;
    auto settings = database.settings();
    settings.statementTimeoutMs = 100;
    settings.busyTimeoutMs = 1000;
    Database other(settings);
    {
        Transaction writer(*database);
        QCOMPARE(failureOf([&] { Transaction waiting(other); }), SqlError::Kind::Busy);
    }
    Transaction writer(other);
    QCOMPARE(failureOf([&] { other.run(QStringLiteral("SELECT pg_sleep(60)")); }),
             SqlError::Kind::Timeout);
}

void TestPostgres::aDatabaseThatIsSetReadOnlyIsNotWritten()
{
    TempDatabase database;
    database->run(QStringLiteral("SET default_transaction_read_only = on"));
    QCOMPARE(failureOf([&] { database->run(addPerson.arg(QStringLiteral("li"))); }),
             SqlError::Kind::ReadOnly);
    QCOMPARE(peopleIn(*database), 0);
}

void TestPostgres::afterAnErrorNothingIsCommitted()
{
    TempDatabase database;
    {
        Transaction transaction(*database);
        database->run(addPerson.arg(QStringLiteral("li")));
        QVERIFY(failureOf([&] { database->run(QStringLiteral("SELEKT 1")); }).has_value());
        QVERIFY(failureOf([&] { transaction.commit(); }).has_value());
    }
    QCOMPARE(peopleIn(*database), 0);
    {
        Transaction outer(*database);
        database->run(addPerson.arg(QStringLiteral("li")));
        {
            Transaction inner(*database);
            QVERIFY(failureOf([&] { database->run(QStringLiteral("SELEKT 1")); }).has_value());
        }
        outer.commit(); // the inner one was undone alone
    }
    QCOMPARE(peopleIn(*database), 1);
}

void TestPostgres::aRecoveryPointLetsATransactionGoOn()
{
    TempDatabase database;
    database->dialect().setStatementTimeout(100);
    Transaction reading(*database, Transaction::Purpose::Read);
    {
        const RecoveryPoint before(*database);
        SqlQuery endless = database->prepare(QStringLiteral("SELECT pg_sleep(60)"));
        QCOMPARE(failureOf([&] { endless.exec(); }), SqlError::Kind::Timeout);
    }
    QCOMPARE(peopleIn(*database), 0);
    {
        const RecoveryPoint unused(*database);
        QCOMPARE(peopleIn(*database), 0);
    }
    reading.commit();
}

void TestPostgres::aLongResultIsReadRowByRow()
{
    TempDatabase database;
    for (const char *name : {"a", "b", "c"})
        database->run(addPerson.arg(QLatin1String(name)));
    {
        SqlQuery people = database->longQuery("select_all_users");
        people.exec();
        const int place = people.placeOf("login_name");
        QStringList names;
        while (people.next())
            names << people.valueAt(place).toString();
        QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("a b c"));
    }
    {
        SqlQuery people = database->longQuery("select_all_users");
        QVERIFY(people.exec().next()); // and the others never
    }
    QCOMPARE(peopleIn(*database), 3);
}

void TestPostgres::whatIsWrongWithTheDatabaseIsSaid()
{
    TempDatabase database;
    const auto problems = [&database] {
        QStringList all;
        SqlQuery query = database->query("check_database");
        query.exec();
        while (query.next())
            all << query.text("problem");
        return all.join(QLatin1Char('\n'));
    };
    QCOMPARE(problems(), QString());
    const PlainConnection plain(database.settings());
    plain.run(QStringLiteral("ALTER TABLE orders DISABLE TRIGGER ALL"));
    plain.run(QStringLiteral("INSERT INTO orders (flow_id, create_time) VALUES (77, 't')"));
    QVERIFY2(problems().contains(QStringLiteral("of orders is switched off")),
             qPrintable(problems()));
    plain.run(QStringLiteral("ALTER TABLE orders ENABLE TRIGGER ALL"));
    QCOMPARE(problems(), QStringLiteral("rows of orders name nothing in job_flows"));
}

void TestPostgres::aSnapshotSaysWhatToDoInstead()
{
    const auto snapshot = DatabaseSnapshot::take(m_shared->settings());
    QVERIFY(!snapshot);
    QVERIFY2(snapshot.text().contains(QStringLiteral("kodms-admin copy")),
             qPrintable(snapshot.text()));
}

KODMS_TEST_MAIN(TestPostgres, QCoreApplication)
#include "TestPostgres.moc"
