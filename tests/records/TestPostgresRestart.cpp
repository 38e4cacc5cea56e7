// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Transaction.h"
#include "tests/records/support/Failures.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/support/TestMain.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;
using KODMS::Tests::failureOf;
using KODMS::Tests::TempDatabase;

namespace {

const QString addPerson = QStringLiteral("INSERT INTO users (login_name, real_name, create_time) "
                                         "VALUES ('%1', '%1', '2026-11-21T00:00:00.000Z')");

constexpr int longestWait = 5000; // ms once the server takes connections

int peopleIn(Database &database)
{
    SqlQuery query = database.prepare(QStringLiteral("SELECT count(*) AS n FROM users"));
    query.exec().next();
    return query.number("n");
}

} // namespace

/// A server of this test's own goes down and comes up again while it is worked with.
class TestPostgresRestart : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void theNextActionWorksAfterARestart_data();
    void theNextActionWorksAfterARestart();
    void meanwhileActionsWorkOrSayThatItIsAway();

private:
    static void start(QProcess &process, const QStringList &command);
    static bool isDone(QProcess &process);
    static bool server(const QStringList &command);

    QTemporaryDir m_dir;
    QByteArray m_common; ///< the file of the server for all tests
};

void TestPostgresRestart::start(QProcess &process, const QStringList &command)
{
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QStringLiteral(KODMS_SOURCE_DIR "/tests/postgres/server"), command);
}

bool TestPostgresRestart::isDone(QProcess &process)
{
    constexpr int patience = 100000; // ms
    return (process.state() == QProcess::NotRunning || process.waitForFinished(patience)) &&
           process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool TestPostgresRestart::server(const QStringList &command)
{
    QProcess process;
    start(process, command);
    return isDone(process);
}

void TestPostgresRestart::initTestCase()
{
    QVERIFY(server({QStringLiteral("start"), m_dir.path(), QStringLiteral("child")}));
    m_common = qgetenv("KODMS_TEST_SERVER");
    qputenv("KODMS_TEST_SERVER", m_dir.filePath(QStringLiteral("server")).toLocal8Bit());
}

void TestPostgresRestart::cleanupTestCase()
{
    QVERIFY(server({QStringLiteral("stop"), m_dir.path()}));
    qputenv("KODMS_TEST_SERVER", m_common); // where the end of the application cleans up
}

void TestPostgresRestart::theNextActionWorksAfterARestart_data()
{
    QTest::addColumn<QString>("signal");
    QTest::newRow("ended in order") << QStringLiteral("INT");
    QTest::newRow("killed") << QStringLiteral("KILL");
}

void TestPostgresRestart::theNextActionWorksAfterARestart()
{
    QFETCH(QString, signal);
    TempDatabase reading;
    auto settings = reading.settings();
    Database writing(settings);
    Database inside(settings);
    reading->query("select_all_users").exec();
    SqlQuery held = reading->query("count_flows");
    held.exec();
    {
        Transaction transaction(inside);
        inside.run(addPerson.arg(QStringLiteral("lost")));
        QVERIFY(server({QStringLiteral("restart"), m_dir.path(), signal}));
        QCOMPARE(failureOf([&] { peopleIn(inside); }), SqlError::Kind::Lost);
    }
    QElapsedTimer isBack;
    isBack.start();
    QCOMPARE(peopleIn(*reading), 0);
    QVERIFY2(isBack.elapsed() < longestWait, qPrintable(QString::number(isBack.elapsed())));
    QVERIFY(held.exec().next());
    {
        Transaction transaction(writing);
        writing.run(addPerson.arg(QStringLiteral("kept")));
        transaction.commit();
    }
    inside.run(addPerson.arg(QStringLiteral("too")));
    QCOMPARE(peopleIn(*reading), 2);
}

void TestPostgresRestart::meanwhileActionsWorkOrSayThatItIsAway()
{
    TempDatabase database;
    QProcess restart;
    start(restart, {QStringLiteral("restart"), m_dir.path(), QStringLiteral("KILL")});
    while (restart.state() != QProcess::NotRunning) {
        const auto failure = failureOf([&] { peopleIn(*database); });
        QVERIFY(!failure || *failure == SqlError::Kind::Lost);
        restart.waitForFinished(20);
    }
    QVERIFY(isDone(restart));
    QCOMPARE(peopleIn(*database), 0);
    QVERIFY(database->generation() > 0);
}

KODMS_TEST_MAIN(TestPostgresRestart, QCoreApplication)
#include "TestPostgresRestart.moc"
