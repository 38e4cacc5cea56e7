// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Transaction.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QSqlDriver>
#include <QTest>

#include <algorithm>

using namespace KODMS::Services;
using KODMS::Tests::PlainConnection;
using KODMS::Tests::TempDatabase;

namespace {

const QString addPerson = QStringLiteral("INSERT INTO users (login_name, real_name, create_time) "
                                         "VALUES ('%1', '%1', '2026-11-21T00:00:00.000Z')");

/// How far somebody has read the log.
class Reader {
public:
    explicit Reader(Database &database) : m_database(database)
    {
        SqlQuery span = m_database.query("select_change_log_span");
        span.exec().next();
        m_newest = span.int64("newest");
        m_moment = span.text("moment");
    }

    /// The rows that the log has named since.
    QStringList changes()
    {
        QStringList ids;
        SqlQuery log = m_database.query("select_changes");
        log.bind(":seq", m_newest).bind(":moment", m_moment).bind(":most", 100).exec();
        const qint64 known = m_newest;
        while (log.next()) {
            if (log.number("is_state") == 1) {
                m_moment = log.text("moment");
            } else if (log.int64("seq") != known) {
                ids << log.text("row_id");
                m_newest = std::max(m_newest, log.int64("seq"));
            }
        }
        return ids;
    }

    qint64 newest() const { return m_newest; }

private:
    Database &m_database;
    qint64 m_newest = 0;
    QString m_moment;
};

} // namespace

/// How others hear of a change on a server: by the log, in whichever order transactions
/// begin and end, and by a notification.
class TestPostgresChanges : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aTransactionAtWorkHoldsNothingBack();
    void whatBeganFirstAndEndsLastIsNotOverlooked();
    void aSmallerNumberOfALaterTransactionIsNotOverlooked();
    void entriesOfAnotherServerAreOld();
    void theHistoryHasAName();
    void everyTransactionThatChangesNotifiesOnce();
};

/// However long it takes, nothing is read twice, and what it leaves is read when it is there.
void TestPostgresChanges::aTransactionAtWorkHoldsNothingBack()
{
    TempDatabase database;
    const PlainConnection foreign(database.settings());
    Reader reader(*database);
    database->run(addPerson.arg(QStringLiteral("before"))); // user 1
    QCOMPARE(reader.changes(), QStringList(QStringLiteral("1")));
    QCOMPARE(reader.changes(), QStringList());
    foreign.run(QStringLiteral("BEGIN"));
    foreign.run(addPerson.arg(QStringLiteral("foreign"))); // user 2, and writes without our lock
    database->run(addPerson.arg(QStringLiteral("ours")));  // user 3
    QCOMPARE(reader.changes(), QStringList(QStringLiteral("3")));
    QCOMPARE(reader.changes(), QStringList());
    Reader late(*database);
    QCOMPARE(late.changes(), QStringList());
    foreign.run(QStringLiteral("COMMIT"));
    QCOMPARE(reader.changes(), QStringList(QStringLiteral("2")));
    QCOMPARE(late.changes(), QStringList(QStringLiteral("2")));
    QCOMPARE(reader.changes(), QStringList());
    QCOMPARE(reader.newest(), qint64(3));
}

/// Entries are counted when they are written, and seen when their transaction ends.
void TestPostgresChanges::whatBeganFirstAndEndsLastIsNotOverlooked()
{
    TempDatabase database;
    const PlainConnection first(database.settings());
    const PlainConnection second(database.settings());
    const QString begin = QStringLiteral("SELECT pg_current_xact_id()");
    Reader reader(*database);
    first.run(QStringLiteral("BEGIN"));
    first.run(begin);
    second.run(QStringLiteral("BEGIN"));
    second.run(begin);
    second.run(addPerson.arg(QStringLiteral("second"))); // user 1, the first entry
    first.run(addPerson.arg(QStringLiteral("first")));   // user 2, the second entry
    first.run(QStringLiteral("COMMIT"));
    QCOMPARE(reader.changes(), QStringList(QStringLiteral("2")));
    QCOMPARE(reader.newest(), qint64(2));
    second.run(QStringLiteral("COMMIT"));
    QCOMPARE(reader.changes(), QStringList(QStringLiteral("1")));
    QCOMPARE(reader.changes(), QStringList());
    QCOMPARE(reader.newest(), qint64(2));
}

/// A number that was given out before, to a transaction that began after the look.
void TestPostgresChanges::aSmallerNumberOfALaterTransactionIsNotOverlooked()
{
    TempDatabase database;
    const PlainConnection late(database.settings());
    const QString number = late.texts(QStringLiteral("SELECT nextval(pg_get_serial_sequence("
                                                     "'change_log', 'seq'))"))
                               .constFirst();
    database->run(addPerson.arg(QStringLiteral("person"))); // user 1
    Reader reader(*database);
    late.run(QStringLiteral("INSERT INTO change_log (seq, kind, row_id, op) VALUES (%1, 4, 77, 2)")
                 .arg(number));
    QVERIFY(number.toLongLong() < reader.newest());
    QCOMPARE(reader.changes(), QStringList(QStringLiteral("77")));
    QCOMPARE(reader.changes(), QStringList());
}

/// The numbers of its server's transactions come along in a dump, and may lie ahead here.
void TestPostgresChanges::entriesOfAnotherServerAreOld()
{
    TempDatabase database;
    database->run(addPerson.arg(QStringLiteral("person")));
    database->run(QStringLiteral("UPDATE change_log SET xid = '4000000000000'"));
    database->run(addPerson.arg(QStringLiteral("ours"))); // user 2
    Reader reader(*database);
    QCOMPARE(reader.changes(), QStringList());
    database->run(addPerson.arg(QStringLiteral("after"))); // user 3
    QCOMPARE(reader.changes(), QStringList(QStringLiteral("3")));
    QCOMPARE(reader.changes(), QStringList());
}

/// Whoever may only read is told, too.
void TestPostgresChanges::theHistoryHasAName()
{
    TempDatabase database;
    const auto home = [&database] {
        SqlQuery query = database->query("select_log_home");
        query.exec().next();
        return query.text("home");
    };
    const QString known = home();
    QCOMPARE(known.split(QLatin1Char(' ')).size(), 4);
    database->run(addPerson.arg(QStringLiteral("person")));
    QCOMPARE(home(), known);
    const QString reader = QStringLiteral("kodms_reader_") + database.settings().name;
    database->run(QStringLiteral("CREATE ROLE %1").arg(reader));
    database->run(QStringLiteral("GRANT SELECT ON change_log TO %1").arg(reader));
    database->run(QStringLiteral("SET ROLE %1").arg(reader));
    QCOMPARE(home(), known);
    database->run(QStringLiteral("RESET ROLE"));
    database->run(QStringLiteral("DROP OWNED BY %1").arg(reader));
    database->run(QStringLiteral("DROP ROLE %1").arg(reader));
    TempDatabase other;
    SqlQuery query = other->query("select_log_home");
    query.exec().next();
    QVERIFY(query.text("home") != known);
}

void TestPostgresChanges::everyTransactionThatChangesNotifiesOnce()
{
    TempDatabase database;
    const PlainConnection listener(database.settings());
    QSqlDriver *driver = listener.database().driver();
    int heard = 0;
    connect(driver,
            qOverload<const QString &, QSqlDriver::NotificationSource, const QVariant &>(
                &QSqlDriver::notification),
            this, [&heard](const QString &channel) {
                if (channel == QLatin1String("kodms_changes"))
                    ++heard;
            });
    QVERIFY(driver->subscribeToNotification(QStringLiteral("kodms_changes")));
    {
        Transaction undone(*database);
        database->run(addPerson.arg(QStringLiteral("undone")));
    }
    {
        Transaction two(*database);
        database->run(addPerson.arg(QStringLiteral("one")));
        database->run(addPerson.arg(QStringLiteral("two")));
        two.commit();
    }
    QTRY_COMPARE_WITH_TIMEOUT(heard, 1, 30000);
    database->run(addPerson.arg(QStringLiteral("three")));
    QTRY_COMPARE_WITH_TIMEOUT(heard, 2, 30000);
}

KODMS_TEST_MAIN(TestPostgresChanges, QCoreApplication)
#include "TestPostgresChanges.moc"
