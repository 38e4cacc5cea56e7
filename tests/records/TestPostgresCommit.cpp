// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Dialect.h"
#include "services/records/Transaction.h"
#include "services/records/WriteListener.h"
#include "tests/records/support/CuttingRelay.h"
#include "tests/records/support/Failures.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <memory>
#include <optional>

using namespace KODMS::Services;
using KODMS::Tests::CuttingRelay;
using KODMS::Tests::failureOf;
using KODMS::Tests::PlainConnection;
using KODMS::Tests::TempDatabase;
using Cut = CuttingRelay::Cut;
using Kind = std::optional<SqlError::Kind>;

namespace {

const QString addPerson = QStringLiteral("INSERT INTO users (login_name, real_name, create_time) "
                                         "VALUES ('li', 'li', '2026-11-21T00:00:00.000Z')");

class Listener final : public WriteListener {
public:
    void writeBegins() override { told += QLatin1Char('b'); }

    void writeEnds() override { told += QLatin1Char('e'); }

    void written() override { told += QLatin1Char('w'); }

    QString told;
};

} // namespace

/// The connection is lost while a change is saved.
class TestPostgresCommit : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aChangeIsSavedOnceOrNotAtAll_data();
    void aChangeIsSavedOnceOrNotAtAll();
    void aSingleStatementIsAskedForToo();
    void aChangeThatFailsWhileItIsSavedIsLost();
    void whatCannotBeFoundOutIsSaid();
    void aWriterThatKeepsTheLockLeavesItOpen();
    void aServerOfAnotherHistoryKnowsNothing();

private:
    void inCommit(const QString &what) const;
    QString people() const;

    std::optional<TempDatabase> m_database;
    std::unique_ptr<PlainConnection> m_plain;
    std::unique_ptr<CuttingRelay> m_relay;
    std::unique_ptr<Database> m_behindRelay;
};

void TestPostgresCommit::init()
{
    m_database.emplace();
    DatabaseSettings settings = m_database->settings();
    m_plain = std::make_unique<PlainConnection>(settings);
    m_relay = std::make_unique<CuttingRelay>(settings.host, settings.port);
    settings.host = QStringLiteral("127.0.0.1");
    settings.port = m_relay->port();
    settings.busyTimeoutMs = 30000; // a slow machine may take its time to save
    m_behindRelay = std::make_unique<Database>(settings);
}

void TestPostgresCommit::cleanup()
{
    m_behindRelay.reset();
    m_relay.reset();
    m_plain.reset();
    m_database.reset();
}

/// Does it at the very end of each transaction that adds a person.
void TestPostgresCommit::inCommit(const QString &what) const
{
    m_plain->run(QStringLiteral("CREATE FUNCTION at_the_end() RETURNS trigger LANGUAGE plpgsql AS "
                                "$$ BEGIN %1; RETURN NULL; END; $$")
                     .arg(what));
    m_plain->run(QStringLiteral("CREATE CONSTRAINT TRIGGER at_the_end AFTER INSERT ON users "
                                "DEFERRABLE INITIALLY DEFERRED "
                                "FOR EACH ROW EXECUTE FUNCTION at_the_end()"));
}

QString TestPostgresCommit::people() const
{
    return m_plain->texts(QStringLiteral("SELECT count(*) FROM users")).value(0);
}

void TestPostgresCommit::aChangeIsSavedOnceOrNotAtAll_data()
{
    QTest::addColumn<int>("cut");
    QTest::addColumn<bool>("isSaved");
    QTest::newRow("not lost") << static_cast<int>(Cut::Never) << true;
    QTest::newRow("lost before it") << static_cast<int>(Cut::BeforeCommit) << false;
    QTest::newRow("lost meanwhile") << static_cast<int>(Cut::InCommit) << true;
    QTest::newRow("lost after it") << static_cast<int>(Cut::AfterCommit) << true;
}

void TestPostgresCommit::aChangeIsSavedOnceOrNotAtAll()
{
    QFETCH(int, cut);
    QFETCH(bool, isSaved);
    inCommit(QStringLiteral("PERFORM pg_sleep(0.5)"));
    Listener listener;
    m_behindRelay->setWriteListener(&listener);
    {
        Transaction transaction(*m_behindRelay);
        m_behindRelay->run(addPerson);
        m_relay->cutNext(static_cast<Cut>(cut));
        const Kind failure = failureOf([&] { transaction.commit(); });
        QCOMPARE(failure, isSaved ? Kind() : Kind(SqlError::Kind::Lost));
    }
    QVERIFY(m_relay->hasCut());
    QVERIFY(!m_behindRelay->isInTransaction());
    QCOMPARE(people(), isSaved ? QStringLiteral("1") : QStringLiteral("0"));
    QCOMPARE(listener.told, isSaved ? QStringLiteral("bew") : QStringLiteral("be"));
    m_behindRelay->run(QStringLiteral("DELETE FROM users")); // and it goes on
    QCOMPARE(people(), QStringLiteral("0"));
    m_behindRelay->setWriteListener(nullptr);
}

void TestPostgresCommit::aSingleStatementIsAskedForToo()
{
    m_relay->cutNext(Cut::AfterCommit);
    m_behindRelay->prepare(addPerson).exec();
    QVERIFY(m_relay->hasCut());
    m_relay->cutNext(Cut::AfterCommit);
    m_behindRelay->run(QStringLiteral("UPDATE users SET real_name = 'wang'"));
    QVERIFY(m_relay->hasCut());
    QCOMPARE(m_plain->texts(QStringLiteral("SELECT real_name FROM users")),
             QStringList(QStringLiteral("wang")));
}

void TestPostgresCommit::aChangeThatFailsWhileItIsSavedIsLost()
{
    inCommit(QStringLiteral("PERFORM pg_terminate_backend(pg_backend_pid()), pg_sleep(30)"));
    QCOMPARE(failureOf([&] { m_behindRelay->run(addPerson); }), Kind(SqlError::Kind::Lost));
    QCOMPARE(people(), QStringLiteral("0"));
}

void TestPostgresCommit::whatCannotBeFoundOutIsSaid()
{
    m_relay->cutNext(Cut::AfterCommit, true);
    QCOMPARE(failureOf([&] { m_behindRelay->run(addPerson); }), Kind(SqlError::Kind::Unsure));
    QVERIFY(!m_behindRelay->isInTransaction());
    const SqlError told(SqlError::Kind::Unsure, {}, {});
    QVERIFY(told.userText().contains(QStringLiteral("可能已经保存")));
    m_relay->letIn();
    QCOMPARE(people(), QStringLiteral("1"));
    m_behindRelay->run(QStringLiteral("DELETE FROM users"));
    QCOMPARE(people(), QStringLiteral("0"));
}

void TestPostgresCommit::aWriterThatKeepsTheLockLeavesItOpen()
{
    inCommit(QStringLiteral("WHILE NOT pg_try_advisory_xact_lock(1) LOOP "
                            "PERFORM pg_sleep(0.02); END LOOP"));
    m_plain->run(QStringLiteral("SELECT pg_advisory_lock(1)"));
    DatabaseSettings settings = m_behindRelay->settings();
    settings.busyTimeoutMs = 20;
    Database impatient(settings);
    m_relay->cutNext(Cut::InCommit);
    QCOMPARE(failureOf([&] { impatient.run(addPerson); }), Kind(SqlError::Kind::Unsure));
    QVERIFY(!impatient.isInTransaction());
    QCOMPARE(people(), QStringLiteral("0"));
    m_plain->run(QStringLiteral("SELECT pg_advisory_unlock(1)"));
    QTRY_COMPARE_WITH_TIMEOUT(people(), QStringLiteral("1"), 30000);
    impatient.run(QStringLiteral("DELETE FROM users"));
    QCOMPARE(people(), QStringLiteral("0"));
}

/// One that has taken the place of another may have given the number to somebody else.
void TestPostgresCommit::aServerOfAnotherHistoryKnowsNothing()
{
    const QString known = m_plain->texts(QStringLiteral("SELECT pg_current_xact_id()")).value(0);
    const QString history =
        m_plain->texts(QStringLiteral("SELECT left(pg_walfile_name(pg_current_wal_lsn()), 8)"))
            .value(0);
    const auto fate = [this](const QString &transaction) {
        return m_plain->texts((*m_database)->dialect().fateOf(transaction)).value(0);
    };
    QCOMPARE(fate(history + known), QStringLiteral("committed"));
    const QString other = fate(QStringLiteral("000000FF") + known);
    QVERIFY2(other.contains(QStringLiteral("elsewhere")), qPrintable(other));
}

KODMS_TEST_MAIN(TestPostgresCommit, QCoreApplication)
#include "TestPostgresCommit.moc"
