// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Transaction.h"
#include "services/search/ColumnIndex.h"
#include "services/search/IndexBuilder.h"
#include "tests/records/support/ViewFixture.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <functional>
#include <utility>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

/// Something happens after each answer of the index, before the page is read.
class Interrupted final : public ViewIndex {
public:
    Interrupted(ViewIndex &index, std::function<void()> meanwhile)
        : m_index(index), m_meanwhile(std::move(meanwhile))
    {
    }

    bool isReady() override { return m_index.isReady(); }

    std::optional<Answer> find(Database &database, const SearchView &view,
                               const SearchRequest &request, const Condition &countWhere) override
    {
        m_askedInside += database.isInTransaction() ? 1 : 0;
        auto answer = m_index.find(database, view, request, countWhere);
        m_meanwhile();
        return answer;
    }

    /// In a transaction.
    int askedInside() const { return m_askedInside; }

private:
    ViewIndex &m_index;
    std::function<void()> m_meanwhile;
    int m_askedInside = 0;
};

} // namespace

/// The index over a server: connections end, transactions end in another order than they
/// began, numbers of the log are left out. None of it makes it read everything again.
class TestPostgresIndex : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aLostConnectionLosesNoIndex();
    void aConnectionThatFailsInTheBackgroundLosesNoIndex();
    void whatWasUndoneLeavesNoGap();
    void whatIsWrittenBesideATransactionAtWorkIsSeen();
    void aTransactionElsewhereMayLastForHours();
    void whatWasTrimmedBesideATransactionAtWorkIsNotMissed();
    void aDatabaseThatWasPutBackIsReadAnew();
    void aSearchOfNewsNeedsNoTransaction();
    void aPageOfAnotherStateIsReadAgain_data();
    void aPageOfAnotherStateIsReadAgain();
    void aConnectionLostBeforeThePageLosesNothing();
    void whatIsStoppedReadsNoMore_data();
    void whatIsStoppedReadsNoMore();

private:
    static constexpr int flows = 60;
    static constexpr int manyFlows = 20'000;

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

    /// More than are read while somebody waits.
    void changeOften() const
    {
        for (int i = 0; i <= ColumnIndex::mostChanges / flows; ++i)
            m_plain->run(QStringLiteral("UPDATE job_compress SET tips = 'often'"));
    }

    /// So many that a result of theirs does not come at once.
    void addManyFlows() const
    {
        const QString series =
            QStringLiteral(" FROM generate_series(%1, %2) AS id").arg(flows + 1).arg(manyFlows);
        const QString moment = QStringLiteral("'2026-11-02T00:00:00.000Z'");
        m_plain->run(QStringLiteral("INSERT INTO jobs (name, customer_id, serial_number, "
                                    "create_user_id, create_time) SELECT 'job' || id, 1, id, 1, ") +
                     moment + series);
        m_plain->run(QStringLiteral("INSERT INTO job_flows (id, guid, job_name, orig_file_id, "
                                    "create_user_id, create_time) SELECT id, "
                                    "lpad(CAST(id AS TEXT), 32, 'f'), 'job' || id, 1, 1, ") +
                     moment + series);
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

/// What is known is followed again as soon as somebody searches. A change that the log does
/// not tell of shows that it was not read anew.
void TestPostgresIndex::aConnectionThatFailsInTheBackgroundLosesNoIndex()
{
    m_plain->run(QStringLiteral("ALTER TABLE jobs DISABLE TRIGGER jobs_log"));
    m_plain->run(QStringLiteral("UPDATE jobs SET layer_count = 17 WHERE name LIKE '%4'"));
    changeOften();
    const QString gate = QStringLiteral("ALTER DATABASE %1 WITH ALLOW_CONNECTIONS %2")
                             .arg(m_house->database().settings().name);
    const auto server = elsewhere();
    server->run(gate.arg(QStringLiteral("false")));
    for (int i = 0; i < 5; ++i) {     // more often than what is of no use is read
        QCOMPARE(jobs("A1B"), flows); // by the statements
        m_index->load();
        QVERIFY(isReady());
    }
    server->run(gate.arg(QStringLiteral("true")));
    QCOMPARE(jobs("A1B"), flows);
    m_index->load();
    m_plain->run(newRemark(9));
    QCOMPARE(seen(), 1);
    QVERIFY(isReady());
    QVERIFY(m_house->searchFlows({condition("JobTable_LayerCount", "17", false)}));
    QCOMPARE(m_house->total, 0);
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

/// Unless somebody writes at that very moment, in whichever database of the server: one of many
/// searches will find it silent.
void TestPostgresIndex::aSearchOfNewsNeedsNoTransaction()
{
    Interrupted index(*m_index, [] {});
    m_house->context().setViewIndex(&index);
    int outside = 0;
    for (int i = 1; i <= flows; ++i) {
        m_plain->run(newRemark(i));
        const int before = index.askedInside();
        QCOMPARE(seen(), i);
        QCOMPARE(m_house->flowIds().size(), i);
        outside += index.askedInside() == before ? 1 : 0;
    }
    QVERIFY(outside > 0);
    QVERIFY(isReady());
}

void TestPostgresIndex::aPageOfAnotherStateIsReadAgain_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<QVector<int>>("found");
    QTest::newRow("one more") << newRemark(9) << QVector<int>{7, 9};
    QTest::newRow("none left") << QStringLiteral("UPDATE job_flows SET tips = '' WHERE id = 7")
                               << QVector<int>();
    QTest::newRow("gone") << QStringLiteral(
                                 "WITH gone AS (DELETE FROM job_compress WHERE flow_id = 7) "
                                 "DELETE FROM job_flows WHERE id = 7")
                          << QVector<int>();
    QTest::newRow("what no search asks for")
        << QStringLiteral("UPDATE job_flows SET check_time = '2026-11-02T00:00:00.000Z' "
                          "WHERE id = 7")
        << QVector<int>{7};
}

/// Somebody else writes after the look at the log and before the page is read.
void TestPostgresIndex::aPageOfAnotherStateIsReadAgain()
{
    QFETCH(const QString, change);
    QFETCH(const QVector<int>, found);
    m_plain->run(newRemark(7));
    QCOMPARE(seen(), 1);
    bool isChanged = false;
    Interrupted index(*m_index, [&] {
        if (!std::exchange(isChanged, true))
            m_plain->run(change);
    });
    m_house->context().setViewIndex(&index);
    QCOMPARE(seen(), found.size());
    QCOMPARE(m_house->flowIds(), found);
    QVERIFY(index.askedInside() > 0);
    QCOMPARE(seen(), found.size());
    QVERIFY(isReady());
}

void TestPostgresIndex::aConnectionLostBeforeThePageLosesNothing()
{
    m_plain->run(newRemark(7));
    bool isLost = false;
    Interrupted index(*m_index, [&] {
        if (!std::exchange(isLost, true))
            m_plain->run(QStringLiteral("SELECT pg_terminate_backend(pid, 30000) "
                                        "FROM pg_stat_activity WHERE datname = current_database() "
                                        "AND pid <> pg_backend_pid()"));
    });
    m_house->context().setViewIndex(&index);
    QCOMPARE(seen(), 1);
    QCOMPARE(m_house->flowIds(), QVector<int>{7});
    QVERIFY(index.askedInside() > 0);
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

void TestPostgresIndex::whatIsStoppedReadsNoMore_data()
{
    QTest::addColumn<int>("questions"); // answered with "go on"
    QTest::addColumn<bool>("isGivenUp");
    QTest::newRow("before anything") << 0 << false;
    QTest::newRow("before the people") << 1 << false;
    QTest::newRow("before the customers") << 2 << false;
    QTest::newRow("before the first flow") << 3 << false;
    QTest::newRow("at the first flow") << 4 << true;
    QTest::newRow("among the flows") << 1000 << true;
    QTest::newRow("before the original files") << manyFlows + 4 << false;
    QTest::newRow("among the original files") << manyFlows + 20 << true;
}

/// The rest of a result that has begun would come whole: its connection is given up at once.
void TestPostgresIndex::whatIsStoppedReadsNoMore()
{
    QFETCH(int, questions);
    QFETCH(bool, isGivenUp);
    addManyFlows();
    Database database(m_house->database().settings());
    SqlQuery self = database.prepare(QStringLiteral("SELECT pg_backend_pid() AS pid"));
    self.exec().next();
    const QString look =
        QStringLiteral("SELECT pid FROM pg_stat_activity WHERE pid = %1").arg(self.number("pid"));
    int asked = 0;
    IndexBuilder builder(database, [&asked, questions] { return ++asked > questions; });
    QVERIFY(builder.build(RowBits::mostRows) == nullptr);
    QCOMPARE(asked, questions + 1);
    if (isGivenUp)
        QTRY_COMPARE_WITH_TIMEOUT(m_plain->texts(look), QStringList(), 60000);
    else
        QCOMPARE(m_plain->texts(look).size(), 1);
    self.exec().next(); // on a new connection, when the old one was given up
    QCOMPARE(m_plain->texts(look).isEmpty(), isGivenUp);
    IndexBuilder again(database, [] { return false; });
    const auto all = again.build(RowBits::mostRows);
    QVERIFY(all != nullptr);
    QCOMPARE(static_cast<int>(all->flows.rows()), manyFlows);
}

KODMS_TEST_MAIN(TestPostgresIndex, QCoreApplication)
#include "TestPostgresIndex.moc"
