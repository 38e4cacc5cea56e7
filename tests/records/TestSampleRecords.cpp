// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/SchemaMigrator.h"
#include "services/records/TimeText.h"
#include "services/records/sample/SampleRecords.h"
#include "services/records/sample/SampleTime.h"
#include "tests/records/support/SchemaText.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QTest>

using namespace KODMS::Services;
using KODMS::Tests::PlainConnection;
using KODMS::Tests::problemsOf;
using KODMS::Tests::schemaOf;
using KODMS::Tests::TempDatabase;

namespace {

qint64 numberOf(Database &database, const QString &sql)
{
    SqlQuery query = database.prepare(QStringLiteral("SELECT (%1) AS n").arg(sql));
    query.exec().next();
    return query.int64("n");
}

void generate(Database &database, int flows, quint32 seed)
{
    NoProgress progress;
    const Outcome outcome = SampleRecords(database, 0, {}).write(flows, seed, progress);
    QVERIFY2(outcome.ok, qPrintable(outcome.text));
}

/// Everything that the tables hold, in order, as one number.
QByteArray contentsOf(const TempDatabase &database)
{
    const PlainConnection plain(database.settings());
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const char *table : {"customers", "users", "jobs", "job_flows", "job_compress", "orders",
                              "orig_files", "orig_file_assign", "pre_check_assign", "questions"}) {
        const QStringList rows =
            plain.sortedRows(QStringLiteral("SELECT * FROM ") + QLatin1String(table));
        hash.addData(rows.join(QLatin1Char('\n')).toUtf8());
    }
    return hash.result();
}

class Cancelled final : public Progress {
public:
    void setTotal(qint64) override {}

    void advance(qint64) override {}

    bool isCancelled() const override { return true; }
};

} // namespace

/// Generated records are what they promise: whole, plausible, the same for the
/// same seed, and made as one change.
class TestSampleRecords : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theRecordsAreWhole();
    void nearlyAllFlowsAreFinished();
    void aFewFlowsShowEveryState();
    void jobNamesAreCodeAndSerialNumber();
    void questionsStandInAllFourStates();
    void theWorkBelongsToThoseWhoCanSignIn();
    void indexesAndTriggersAreBack();
    void theSameSeedGivesTheSameRecords();
    void aSecondSampleGoesOn();
    void keysGoOnAfterTheGeneratedOnes();
    void aCancelledSampleLeavesNothing();
    void aCancelledSampleStoresNoMoreFiles();
    void aFileThatCannotBeStoredLeavesNothing();
    void timesAreWrittenAsTheRecordsWriteThem();
};

void TestSampleRecords::theRecordsAreWhole()
{
    TempDatabase database;
    generate(*database, 1500, 1);
    QCOMPARE(problemsOf(*database), QStringList());
    for (const char *table : {"job_flows", "jobs", "job_compress", "orders"})
        QCOMPARE(
            numberOf(*database, QStringLiteral("SELECT count(*) FROM ") + QLatin1String(table)),
            1500);
    QCOMPARE(numberOf(*database, QStringLiteral("SELECT count(*) FROM flow_view")), 1500);
    QCOMPARE(numberOf(*database, QStringLiteral("SELECT count(*) FROM orig_file_view")), 1500);
    QCOMPARE(
        numberOf(*database,
                 QStringLiteral("SELECT count(*) FROM job_flows f JOIN job_compress c ON "
                                "c.flow_id = f.id WHERE c.flow_create_time <> f.create_time OR "
                                "c.orig_file_id <> f.orig_file_id")),
        0);
    QCOMPARE(
        numberOf(*database, QStringLiteral("SELECT count(*) FROM orig_files WHERE has_body = 1")),
        0);
    QVERIFY(numberOf(*database, QStringLiteral("SELECT count(*) FROM job_flows WHERE tips <> ''")) >
            200);
    QVERIFY(
        numberOf(*database, QStringLiteral("SELECT count(*) FROM customers WHERE superior_1 <> '' "
                                           "AND superior_2 <> ''")) > 0);
    QCOMPARE(
        numberOf(*database, QStringLiteral("SELECT count(DISTINCT file_type) FROM orig_files WHERE "
                                           "kind = 0")),
        5); // tgz, zip, rar, kos and folders
    QVERIFY(numberOf(*database,
                     QStringLiteral("SELECT count(*) FROM orig_file_view WHERE FileType = ''")) >
            0);
    QCOMPARE(numberOf(*database,
                      QStringLiteral("SELECT count(*) FROM orig_file_view WHERE (FileType = '') <> "
                                     "(OrigName LIKE '%\\_gerber' ESCAPE '\\')")),
             0);
}

void TestSampleRecords::nearlyAllFlowsAreFinished()
{
    TempDatabase database;
    generate(*database, 2000, 1);
    QCOMPARE(
        numberOf(*database, QStringLiteral("SELECT count(*) FROM job_flows WHERE flow_status = 3 "
                                           "AND check_flag = 2")),
        1940);
}

void TestSampleRecords::aFewFlowsShowEveryState()
{
    TempDatabase database;
    generate(*database, 40, 5);
    QCOMPARE(
        numberOf(*database, QStringLiteral("SELECT count(DISTINCT flow_status * 4 + check_flag) "
                                           "FROM job_flows")),
        8);
    // What a state implies is there.
    QCOMPARE(
        numberOf(*database, QStringLiteral("SELECT count(*) FROM job_flows WHERE flow_status > 0 "
                                           "AND (last_import_file_id IS NULL OR orig_job_name = "
                                           "'' OR last_import_time IS NULL)")),
        0);
    QCOMPARE(
        numberOf(*database, QStringLiteral("SELECT count(*) FROM job_flows WHERE flow_status = 0 "
                                           "AND (last_import_file_id IS NOT NULL OR orig_job_name "
                                           "<> '')")),
        0);
    QCOMPARE(numberOf(*database,
                      QStringLiteral(
                          "SELECT count(*) FROM job_flows WHERE check_time < last_import_time "
                          "OR last_import_time < create_time")),
             0);
}

void TestSampleRecords::jobNamesAreCodeAndSerialNumber()
{
    TempDatabase database;
    generate(*database, 300, 1);
    static const QRegularExpression form(QStringLiteral("^[A-Za-z0-9]{3}[0-9]{6}$"));
    SqlQuery query =
        database->prepare(QStringLiteral("SELECT j.name AS name, k.code AS code, j.serial_number "
                                         "AS serial, k.last_serial AS last_serial "
                                         "FROM jobs j JOIN customers k ON k.id = j.customer_id"));
    query.exec();
    bool hasWeb = false;
    while (query.next()) {
        const QString name = query.text("name");
        QVERIFY2(form.match(name).hasMatch(), qPrintable(name));
        QCOMPARE(name.left(3), query.text("code"));
        QCOMPARE(name.mid(3).toInt(), query.number("serial"));
        QVERIFY(query.number("serial") <= query.number("last_serial"));
        hasWeb = hasWeb || name.startsWith(QLatin1String("web"));
    }
    QVERIFY(hasWeb);
}

void TestSampleRecords::questionsStandInAllFourStates()
{
    TempDatabase database;
    generate(*database, 600, 1);
    QCOMPARE(
        numberOf(*database, QStringLiteral("SELECT count(DISTINCT check_flag) FROM questions")), 4);
    QCOMPARE(numberOf(*database, QStringLiteral("SELECT count(DISTINCT payment) FROM orders")), 2);
}

void TestSampleRecords::theWorkBelongsToThoseWhoCanSignIn()
{
    TempDatabase database;
    for (const char *login : {"worker", "robot"})
        database->run(QStringLiteral("INSERT INTO users (login_name, real_name, password_hash, "
                                     "create_time) VALUES ('%1', '%1', 'hash', 't')")
                          .arg(QLatin1String(login)));
    database->run(QStringLiteral("INSERT INTO user_roles (user_id, role) VALUES (2, 'robot')"));
    generate(*database, 200, 1);
    QVERIFY(numberOf(*database,
                     QStringLiteral("SELECT count(*) FROM job_flows WHERE flow_status < 3 AND "
                                    "create_user_id = 1")) >= 7);
    QCOMPARE(
        numberOf(*database,
                 QStringLiteral("SELECT count(*) FROM orig_file_assign WHERE executor_id = 2")),
        0);
    QVERIFY(
        numberOf(*database, QStringLiteral("SELECT count(*) FROM users WHERE department = 2 AND "
                                           "post = 6")) > 0);
    QVERIFY(
        numberOf(*database, QStringLiteral("SELECT count(*) FROM users WHERE department = 3 AND "
                                           "post = 10")) > 0);
}

void TestSampleRecords::indexesAndTriggersAreBack()
{
    TempDatabase database;
    const QStringList before = schemaOf(*database);
    generate(*database, 100, 1);
    QCOMPARE(schemaOf(*database), before);
    QCOMPARE(numberOf(*database,
                      QStringLiteral("SELECT kind FROM change_log ORDER BY seq DESC LIMIT 1")),
             0);
    database->run(QStringLiteral("UPDATE job_flows SET tips = 'x' WHERE id = 50"));
    QCOMPARE(numberOf(*database,
                      QStringLiteral("SELECT row_id FROM change_log ORDER BY seq DESC LIMIT 1")),
             50);
}

void TestSampleRecords::theSameSeedGivesTheSameRecords()
{
    TempDatabase first;
    TempDatabase second;
    TempDatabase other;
    generate(*first, 150, 7);
    generate(*second, 150, 7);
    generate(*other, 150, 8);
    QCOMPARE(contentsOf(first), contentsOf(second));
    QVERIFY(contentsOf(first) != contentsOf(other));
}

void TestSampleRecords::aSecondSampleGoesOn()
{
    TempDatabase database;
    generate(*database, 100, 1);
    const QStringList schema = schemaOf(*database);
    generate(*database, 60, 2);
    QCOMPARE(numberOf(*database, QStringLiteral("SELECT count(*) FROM job_flows")), 160);
    QCOMPARE(problemsOf(*database), QStringList());
    QCOMPARE(schemaOf(*database), schema);
    QVERIFY(numberOf(*database,
                     QStringLiteral("SELECT count(*) FROM change_log WHERE kind = 1 AND op = 1")) >=
            60);
}

void TestSampleRecords::keysGoOnAfterTheGeneratedOnes()
{
    TempDatabase database;
    generate(*database, 30, 1);
    const qint64 largest = numberOf(*database, QStringLiteral("SELECT max(id) FROM orig_files"));
    SqlQuery file =
        database->prepare(QStringLiteral("INSERT INTO orig_files (guid, stored_name, create_time) "
                                         "VALUES ('next', 'next.zip', 't') RETURNING id"));
    QVERIFY(file.exec().next());
    QCOMPARE(file.int64("id"), largest + 1);
    database->run(QStringLiteral("INSERT INTO jobs (name, customer_id, serial_number, create_time) "
                                 "SELECT 'NEXT', min(id), 1, 't' FROM customers"));
    SqlQuery next = database->prepare(QStringLiteral(
        "INSERT INTO job_flows (guid, job_name, create_time) VALUES ('next', 'NEXT', 't') "
        "RETURNING id"));
    QVERIFY(next.exec().next());
    QCOMPARE(next.int64("id"), qint64(31));
}

void TestSampleRecords::aCancelledSampleLeavesNothing()
{
    TempDatabase database;
    const QStringList schema = schemaOf(*database);
    Cancelled progress;
    QVERIFY(!SampleRecords(*database, 0, {}).write(50, 1, progress).ok);
    QCOMPARE(numberOf(*database, QStringLiteral("SELECT count(*) FROM job_flows")), 0);
    QCOMPARE(numberOf(*database, QStringLiteral("SELECT count(*) FROM customers")), 0);
    QCOMPARE(schemaOf(*database), schema);
    generate(*database, 50, 1);
}

void TestSampleRecords::aCancelledSampleStoresNoMoreFiles()
{
    TempDatabase database;
    int files = 0;
    Cancelled progress;
    const auto count = [&files](const SampleFile &) {
        ++files;
        return Outcome::success();
    };
    QVERIFY(!SampleRecords(*database, 20, count).write(50, 1, progress).ok);
    QCOMPARE(files, 0);
}

void TestSampleRecords::aFileThatCannotBeStoredLeavesNothing()
{
    TempDatabase database;
    int files = 0;
    NoProgress progress;
    const Outcome outcome =
        SampleRecords(*database, 100, [&files](const SampleFile &file) {
            return ++files < 30 && !file.storedName.endsWith(QLatin1String(".rar"))
                       ? Outcome::success()
                       : Outcome::failure(QStringLiteral("no space"));
        }).write(100, 1, progress);
    QVERIFY(!outcome.ok);
    QCOMPARE(outcome.text, QStringLiteral("no space"));
    QCOMPARE(files, 30);
    QCOMPARE(numberOf(*database, QStringLiteral("SELECT count(*) FROM orig_files")), 0);
}

void TestSampleRecords::timesAreWrittenAsTheRecordsWriteThem()
{
    for (const qint64 time : {0LL, 951782400123LL, 1709164800000LL, 1793350800999LL})
        QCOMPARE(SampleTime::text(time), storedTime(QDateTime::fromMSecsSinceEpoch(time, Qt::UTC)));
}

KODMS_TEST_MAIN(TestSampleRecords, QCoreApplication)
#include "TestSampleRecords.moc"
