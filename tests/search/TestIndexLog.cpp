// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/search/support/IndexHouse.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/TestMain.h"

#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// The index follows the log of changes, as far as it leads.
class TestIndexLog : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_house = std::make_unique<IndexHouse>(); }

    void cleanup() { m_house.reset(); }

    void theLogSaysReadEverything();
    void aLostEntryIsNoticed();
    void anEntryOfAnotherHistoryIsNoticed();
    void aTrimmedLogIsFollowed();
    void manyChangesAreReadTogether();
    void moreChangesAreReadInTheBackground();
    void whatIsOfNoUseIsNotReadForEver();
    void aLostLogIsNoFailure();

private:
    std::unique_ptr<IndexHouse> m_house;
};

void TestIndexLog::theLogSaysReadEverything()
{
    m_house->load();
    m_house->database().run(
        QStringLiteral("INSERT INTO change_log (kind, row_id, op) VALUES (0, 0, 2)"));
    m_house->database().run(TestDatabase::isServer()
                                ? QStringLiteral("DROP TRIGGER jobs_log ON jobs")
                                : QStringLiteral("DROP TRIGGER jobs_update_log"));
    m_house->database().run(QStringLiteral("UPDATE jobs SET layer_count = 17 WHERE id = 4"));
    const List seventeen{condition("JobTable_LayerCount", "17", false)};
    QVERIFY(m_house->searchFlows(seventeen));
    QCOMPARE(m_house->total, 1);
    QVERIFY(!m_house->isReady());
    m_house->load();
    QVERIFY(m_house->searchFlows(seventeen));
    QCOMPARE(m_house->total, 1);
    QVERIFY(m_house->isReady());
}

void TestIndexLog::aLostEntryIsNoticed()
{
    m_house->load();
    m_house->addFlow(900, QStringLiteral("web000900"));
    m_house->database().run(QStringLiteral("DELETE FROM change_log"));
    QCOMPARE(m_house->jobs("web"), 1);
    QVERIFY(!m_house->isReady());
    m_house->load();
    m_house->addFlow(901, QStringLiteral("web000901")); // after a log without any entry
    QCOMPARE(m_house->jobs("web"), 2);
    m_house->load();
    QCOMPARE(m_house->jobs("web"), 2);
    QVERIFY(m_house->isReady());
}

/// The database went back in time, and then on: the number was given out once more.
void TestIndexLog::anEntryOfAnotherHistoryIsNoticed()
{
    m_house->load();
    m_house->addFlow(900, QStringLiteral("web000900"));
    QCOMPARE(m_house->jobs("web"), 1);
    QVERIFY(m_house->isReady());
    m_house->database().run(
        QStringLiteral("UPDATE change_log SET row_id = 5%1 "
                       "WHERE seq = (SELECT max(seq) FROM change_log)")
            .arg(TestDatabase::isServer() ? QStringLiteral(", xid = '3'") : QString()));
    QCOMPARE(m_house->jobs("web"), 1);
    QVERIFY(!m_house->isReady());
    m_house->load();
    QCOMPARE(m_house->jobs("web"), 1);
    QVERIFY(m_house->isReady());
}

void TestIndexLog::aTrimmedLogIsFollowed()
{
    m_house->load();
    const QString trim = QStringLiteral("DELETE FROM change_log "
                                        "WHERE seq <= (SELECT max(seq) FROM change_log) - %1");
    m_house->database().run(trim.arg(10));
    m_house->addFlow(900, QStringLiteral("web000900"));
    QCOMPARE(m_house->jobs("web"), 1);
    QVERIFY(m_house->isReady());
    m_house->addFlow(901, QStringLiteral("web000901"));
    m_house->addFlow(902, QStringLiteral("web000902"));
    m_house->database().run(trim.arg(1)); // with entries that are not known
    QCOMPARE(m_house->jobs("web"), 3);
    QVERIFY(!m_house->isReady());
    m_house->load();
    QCOMPARE(m_house->jobs("web"), 3);
    QVERIFY(m_house->isReady());
}

void TestIndexLog::manyChangesAreReadTogether()
{
    m_house->load();
    m_house->addUser(4, QStringLiteral("王五"));
    for (int id = 1; id <= IndexHouse::flows; id += 2)
        m_house->assign("orig_file_assign", id, 4);
    m_house->set("users", 2, "real_name", QStringLiteral("李四"));
    m_house->database().run(
        QStringLiteral("UPDATE job_flows SET tips = 'together', batch_number = id"));
    m_house->database().run(QStringLiteral("DELETE FROM job_compress WHERE id > 100"));
    QVERIFY(m_house->searchFlows({condition("Flow_Tips", "TOGETHER", true)}));
    QCOMPARE(m_house->total, IndexHouse::flows);
    QVERIFY(m_house->searchFlows({condition("Flow_UploadBatchNum", "77", false)}));
    QCOMPARE(m_house->flowIds(), QVector<int>{77});
    QVERIFY(m_house->searchFlows({condition("PreUserRealName_OFAssign_Executor", "五", true)}));
    QCOMPARE(m_house->total, IndexHouse::flows / 2);
    QVERIFY(m_house->searchOrigFiles({condition("OrigName", "board", true)}));
    QCOMPARE(m_house->total, 100);
    QVERIFY(m_house->isReady());
}

/// What is known is kept, and only what has changed is read: a change that the log does not
/// tell of is not.
void TestIndexLog::moreChangesAreReadInTheBackground()
{
    m_house->load();
    Database &database = m_house->database();
    database.run(TestDatabase::isServer() ? QStringLiteral("DROP TRIGGER jobs_log ON jobs")
                                          : QStringLiteral("DROP TRIGGER jobs_update_log"));
    database.run(QStringLiteral("UPDATE jobs SET layer_count = 17 WHERE id = 4"));
    for (int i = 0; i <= ColumnIndex::mostChanges / IndexHouse::flows; ++i)
        database.run(QStringLiteral("UPDATE job_compress SET tips = 'often' "));
    const auto often = [this] {
        return m_house->searchOrigFiles({condition("FileTips", "often", true)}) ? m_house->total
                                                                                : -1;
    };
    QCOMPARE(often(), IndexHouse::flows);
    QVERIFY(!m_house->isReady()); // the statements answered
    QTRY_VERIFY_WITH_TIMEOUT((often() == IndexHouse::flows && m_house->isReady()), 30000);
    QVERIFY(m_house->searchFlows({condition("JobTable_LayerCount", "17", false)}));
    QCOMPARE(m_house->total, 0);
}

void TestIndexLog::whatIsOfNoUseIsNotReadForEver()
{
    IndexHouse::expectWarning();
    for (int i = 0; i <= IndexHouse::options().mostRefusals; ++i) {
        m_house->index().load();
        QVERIFY(m_house->isReady());
        m_house->database().run(
            QStringLiteral("INSERT INTO change_log (kind, row_id, op) VALUES (0, 0, 2)"));
        QCOMPARE(m_house->jobs("A1B"), IndexHouse::flows);
        QVERIFY(!m_house->isReady());
    }
    QCOMPARE(m_house->index().status().state, IndexStatus::State::Failed);
    QCOMPARE(m_house->jobs("A1B"), IndexHouse::flows);
    QCOMPARE(m_house->index().status().state, IndexStatus::State::Failed);
}

/// The statements answer, and would say what is wrong if they could not.
void TestIndexLog::aLostLogIsNoFailure()
{
    IndexHouse::expectWarning();
    m_house->load();
    m_house->database().run(QStringLiteral("ALTER TABLE change_log RENAME TO gone"));
    QCOMPARE(m_house->jobs("A1B"), IndexHouse::flows);
    QCOMPARE(m_house->index().status().state, IndexStatus::State::Failed);
    QCOMPARE(m_house->jobs("A1B"), IndexHouse::flows);
}

KODMS_TEST_MAIN(TestIndexLog, QCoreApplication)
#include "TestIndexLog.moc"
