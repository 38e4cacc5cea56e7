// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Transaction.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QSqlDriver>
#include <QTest>

using namespace KODMS::Services;
using KODMS::Tests::PlainConnection;
using KODMS::Tests::TempDatabase;

namespace {

constexpr int settling = 30000; // ms, at most

const QString addPerson = QStringLiteral("INSERT INTO users (login_name, real_name, create_time) "
                                         "VALUES ('%1', '%1', '2026-11-21T00:00:00.000Z')");

/// The rows that the log names behind `known`, and the last entry that is settled.
QStringList changesIn(Database &database, qint64 &known)
{
    QStringList ids;
    SqlQuery log = database.query("select_changes");
    log.bind(":seq", known).bind(":most", 100).exec();
    while (log.next()) {
        if (log.int64("seq") != known)
            ids << log.text("row_id");
        if (log.number("is_settled") == 1)
            known = log.int64("seq");
    }
    return ids;
}

} // namespace

/// How others hear of a change on a server: by the log, in whichever order transactions
/// begin and end, and by a notification.
class TestPostgresChanges : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLogIsNotKnownPastATransactionAtWork();
    void whatBeganFirstAndEndsLastIsNotOverlooked();
    void everyTransactionThatChangesNotifiesOnce();
};

/// Transactions of other databases hold an entry's settling back for a while, never its reading.
void TestPostgresChanges::theLogIsNotKnownPastATransactionAtWork()
{
    TempDatabase database;
    const PlainConnection foreign(database.settings());
    database->run(addPerson.arg(QStringLiteral("before"))); // user 1
    qint64 known = 0;
    QCOMPARE(changesIn(*database, known), QStringList(QStringLiteral("1")));
    QTRY_COMPARE_WITH_TIMEOUT(changesIn(*database, known), QStringList(), settling);
    const qint64 settled = known;
    foreign.run(QStringLiteral("BEGIN"));
    foreign.run(addPerson.arg(QStringLiteral("foreign"))); // user 2, and writes without our lock
    database->run(addPerson.arg(QStringLiteral("ours")));  // user 3
    for (int i = 0; i < 2; ++i) {                          // seen at once, and again
        QCOMPARE(changesIn(*database, known), QStringList(QStringLiteral("3")));
        QCOMPARE(known, settled);
    }
    foreign.run(QStringLiteral("COMMIT"));
    QCOMPARE(changesIn(*database, known), QStringList({QStringLiteral("2"), QStringLiteral("3")}));
    QTRY_COMPARE_WITH_TIMEOUT(changesIn(*database, known), QStringList(), settling);
    QVERIFY(known > settled);
}

/// Entries are counted when they are written, and seen when their transaction ends.
void TestPostgresChanges::whatBeganFirstAndEndsLastIsNotOverlooked()
{
    TempDatabase database;
    const PlainConnection first(database.settings());
    const PlainConnection second(database.settings());
    const QString begin = QStringLiteral("SELECT pg_current_xact_id()");
    first.run(QStringLiteral("BEGIN"));
    first.run(begin);
    second.run(QStringLiteral("BEGIN"));
    second.run(begin);
    second.run(addPerson.arg(QStringLiteral("second"))); // user 1, the first entry
    first.run(addPerson.arg(QStringLiteral("first")));   // user 2, the second entry
    qint64 known = 0;
    first.run(QStringLiteral("COMMIT"));
    QCOMPARE(changesIn(*database, known), QStringList(QStringLiteral("2")));
    QTRY_COMPARE_WITH_TIMEOUT((changesIn(*database, known), known), qint64(2), settling);
    second.run(QStringLiteral("COMMIT"));
    QCOMPARE(changesIn(*database, known), QStringList(QStringLiteral("1")));
    QTRY_COMPARE_WITH_TIMEOUT((changesIn(*database, known), known), qint64(1), settling);
    SqlQuery span = database->query("select_change_log_span");
    QVERIFY(span.exec().next());
    QCOMPARE(span.int64("newest"), known);
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
