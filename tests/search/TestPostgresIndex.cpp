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

private:
    static constexpr int flows = 60;

    bool isReady() const { return m_index->status().state == IndexStatus::State::Ready; }

    int jobs(const std::string &part)
    {
        return m_house->searchFlows({condition("KoJobName", part, true)}) ? m_house->total : -1;
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
    // Read when every entry is settled, so that there is one to go on from.
    const auto loaded = [this] {
        m_index->load();
        SqlQuery span = m_house->database().query("select_change_log_span");
        span.exec().next();
        return isReady() && span.int64("newest") > 0;
    };
    QTRY_VERIFY_WITH_TIMEOUT(loaded(), 30000);
    QTRY_VERIFY_WITH_TIMEOUT(jobs("A1B") == flows && isReady(), 30000);
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

KODMS_TEST_MAIN(TestPostgresIndex, QCoreApplication)
#include "TestPostgresIndex.moc"
