// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Transaction.h"
#include "services/search/ColumnIndex.h"
#include "tests/records/support/ViewFixture.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// The index over a server: connections end, transactions end in another order than they
/// began, numbers of the log are left out. None of it makes it read everything again.
class TestPostgresIndex : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aLostConnectionLosesNoIndex();
    void whatWasUndoneLeavesNoGap();
    void whatIsWrittenBesideATransactionAtWorkIsSeen();
    void aTransactionElsewhereMayLastForHours();
    void whatWasTrimmedBesideATransactionAtWorkIsNotMissed();
    void aDatabaseThatWasPutBackIsReadAnew();

private:
    static constexpr int flows = 60;

    bool isReady() const { return m_index->status().state == IndexStatus::State::Ready; }

    int jobs(const std::string &part)
    {
        return m_house->searchFlows({condition("KoJobName", part, true)}) ? m_house->total : -1;
    }

    /// A connection to another database of the same server.
    std::unique_ptr<PlainConnection> elsewhere() const
    {
        DatabaseSettings settings = m_house->database().settings();
        settings.name = QStringLiteral("postgres");
        return std::make_unique<PlainConnection>(settings);
    }

    static QString newRemark(int flow)
    {
        return QStringLiteral("UPDATE job_flows SET tips = 'seen' WHERE id = %1").arg(flow);
    }

    int seen()
    {
        return m_house->searchFlows({condition("Flow_Tips", "seen", true)}) ? m_house->total : -1;
    }

    std::unique_ptr<ViewFixture> m_house;
    std::unique_ptr<ColumnIndex> m_index;
    std::unique_ptr<PlainConnection> m_plain;
};

void TestPostgresIndex::init()
{
    m_house = std::make_unique<ViewFixture>();
    Transaction together(m_house->database());
    for (int id = 1; id <= flows; ++id)
        m_house->addFlow(id, QStringLiteral("A1B%1").arg(id, 6, 10, QLatin1Char('0')));
    together.commit();
    ColumnIndex::Options options;
    options.smallestTable = 0;
    m_index = std::make_unique<ColumnIndex>(m_house->database().settings(), options);
    m_house->context().setViewIndex(m_index.get());
    m_plain = std::make_unique<PlainConnection>(m_house->database().settings());
    m_index->load();
    QCOMPARE(jobs("A1B"), flows);
    QVERIFY(isReady());
}

void TestPostgresIndex::cleanup()
{
    m_index.reset();
    m_plain.reset();
    m_house.reset();
}

void TestPostgresIndex::aLostConnectionLosesNoIndex()
{
    QCOMPARE(jobs("A1B"), flows);
    m_plain->run(QStringLiteral("SELECT pg_terminate_backend(pid, 30000) FROM pg_stat_activity "
                                "WHERE datname = current_database() AND pid <> pg_backend_pid()"));
    m_plain->run(newRemark(7));
    QCOMPARE(seen(), 1);
    QCOMPARE(jobs("A1B"), flows);
    QVERIFY(isReady());
}

void TestPostgresIndex::whatWasUndoneLeavesNoGap()
{
    for (int i = 1; i <= 3; ++i) {
        m_plain->run(QStringLiteral("BEGIN"));
        m_plain->run(newRemark(i + 10));
        m_plain->run(QStringLiteral("ROLLBACK"));
        m_plain->run(newRemark(i));
        QCOMPARE(seen(), i);
        QVERIFY(isReady());
    }
}

void TestPostgresIndex::whatIsWrittenBesideATransactionAtWorkIsSeen()
{
    const PlainConnection slow(m_house->database().settings());
    slow.run(QStringLiteral("BEGIN"));
    slow.run(newRemark(1));
    m_plain->run(newRemark(2));
    QCOMPARE(seen(), 1);
    QCOMPARE(m_house->flowIds(), QVector<int>{2});
    m_plain->run(newRemark(3));
    QCOMPARE(seen(), 2);
    slow.run(QStringLiteral("COMMIT"));
    QCOMPARE(seen(), 3);
    QVERIFY(isReady());
}

/// More changes than are read at once come beside it; and what is read in the middle of it
/// is of use at once.
void TestPostgresIndex::aTransactionElsewhereMayLastForHours()
{
    const auto slow = elsewhere();
    slow->run(QStringLiteral("BEGIN"));
    slow->run(QStringLiteral("SELECT pg_current_xact_id()"));
    const int rounds = ColumnIndex::mostChanges / flows + 2;
    for (int i = 0; i < rounds; ++i) {
        m_plain->run(QStringLiteral("UPDATE job_flows SET batch_number = batch_number + 1"));
        QCOMPARE(jobs("A1B"), flows);
        QVERIFY(isReady());
    }
    m_index = std::make_unique<ColumnIndex>(m_house->database().settings());
    m_house->context().setViewIndex(m_index.get());
    m_index->load();
    for (int i = 1; i <= 3; ++i) {
        m_plain->run(newRemark(i));
        QCOMPARE(seen(), i);
        QVERIFY(isReady());
    }
    slow->run(QStringLiteral("COMMIT"));
    QCOMPARE(seen(), 3);
    QVERIFY(isReady());
}

/// Its entry is gone before anybody but its writer has seen it.
void TestPostgresIndex::whatWasTrimmedBesideATransactionAtWorkIsNotMissed()
{
    const PlainConnection slow(m_house->database().settings());
    slow.run(QStringLiteral("BEGIN"));
    slow.run(newRemark(1));
    m_plain->run(newRemark(2));
    QCOMPARE(seen(), 1);
    QVERIFY(isReady());
    slow.run(QStringLiteral("COMMIT"));
    m_plain->run(QStringLiteral("DELETE FROM change_log WHERE seq < (SELECT max(seq) "
                                "FROM change_log)"));
    QCOMPARE(seen(), 2);
    QVERIFY(!isReady());
    m_index->load();
    m_plain->run(QStringLiteral("INSERT INTO change_log (kind, row_id, op) VALUES (4, 1, 2)"));
    QCOMPARE(seen(), 2);
    m_plain->run(QStringLiteral("DELETE FROM change_log WHERE seq < (SELECT max(seq) "
                                "FROM change_log)"));
    QCOMPARE(seen(), 2); // nobody was at work, and what is known is there
    QVERIFY(isReady());
}

/// A copy that another server might have: the same entries, but not all of the same records.
void TestPostgresIndex::aDatabaseThatWasPutBackIsReadAnew()
{
    const DatabaseSettings settings = m_house->database().settings();
    DatabaseSettings copy = settings;
    copy.name += QStringLiteral("_copy");
    m_plain.reset();
    const auto admin = elsewhere();
    admin->run(QStringLiteral("SELECT pg_terminate_backend(pid, 30000) FROM pg_stat_activity "
                              "WHERE datname = '%1'")
                   .arg(settings.name));
    admin->run(QStringLiteral("CREATE DATABASE %1 TEMPLATE %2").arg(copy.name, settings.name));
    {
        const PlainConnection inCopy(copy);
        inCopy.run(QStringLiteral("SET session_replication_role = replica")); // no triggers
        inCopy.run(newRemark(5));
    }
    admin->run(QStringLiteral("DROP DATABASE %1").arg(settings.name));
    admin->run(QStringLiteral("ALTER DATABASE %1 RENAME TO %2").arg(copy.name, settings.name));
    QCOMPARE(seen(), 1);
    QVERIFY(!isReady());
    m_index->load();
    QCOMPARE(seen(), 1);
    QVERIFY(isReady());
}

KODMS_TEST_MAIN(TestPostgresIndex, QCoreApplication)
#include "TestPostgresIndex.moc"
