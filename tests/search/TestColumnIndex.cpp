// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Transaction.h"
#include "tests/search/support/IndexHouse.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/TestMain.h"

#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// The view services with an index behind them.
class TestColumnIndex : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_house = std::make_unique<IndexHouse>(); }

    void cleanup() { m_house.reset(); }

    void theStatementsAnswerUntilItIsThere();
    void aSmallInstallationNeedsNone();
    void aChangeOfOnesOwnIsSeen();
    void whatMayBeUndoneIsNotSeen();
    void aUserSeesOnesOwn();
    void renamedPeopleAndCustomersAreFound();
    void aRowDatedBackMoves();
    void anUnknownFieldIsForTheStatements();
    void oddRecordsAreForTheStatements_data();
    void oddRecordsAreForTheStatements();
    void aLostDatabaseIsNoFailure();
    void itStopsWhileItLoads();
    void itTellsItsSize();

private:
    std::unique_ptr<IndexHouse> m_house;
};

void TestColumnIndex::theStatementsAnswerUntilItIsThere()
{
    QCOMPARE(m_house->index().status().state, IndexStatus::State::Off);
    QCOMPARE(m_house->jobs("a1b0000"), 99);
    QVERIFY(m_house->index().status().state !=
            IndexStatus::State::Off); // the first search began it
    QTRY_VERIFY_WITH_TIMEOUT((m_house->jobs("a1b0000") == 99 && m_house->isReady()), 30000);
    QCOMPARE(m_house->jobs("a1b00012"), 1);
    QCOMPARE(m_house->flowIds(), QVector<int>{120});
}

void TestColumnIndex::aSmallInstallationNeedsNone()
{
    m_house->renewIndex(IndexHouse::options(IndexHouse::flows + 1));
    QCOMPARE(m_house->jobs("A1B"), IndexHouse::flows);
    QCOMPARE(m_house->index().status().state, IndexStatus::State::Off);
    m_house->addFlow(IndexHouse::flows + 1, QStringLiteral("A1B000121"));
    QCOMPARE(m_house->jobs("A1B"), IndexHouse::flows + 1);
    QVERIFY(m_house->index().status().state != IndexStatus::State::Off);
}

void TestColumnIndex::aChangeOfOnesOwnIsSeen()
{
    m_house->load();
    m_house->addFlow(900, QStringLiteral("web000900"), QStringLiteral("panel"));
    QCOMPARE(m_house->jobs("WEB"), 1);
    m_house->set("job_flows", 900, "batch_number", 77);
    QVERIFY(m_house->searchFlows({condition("Flow_UploadBatchNum", "77", false)}));
    QCOMPARE(m_house->flowIds(), QVector<int>{900});
    m_house->set("job_compress", 900, "orig_name", QString(5000, QLatin1Char('y')));
    QVERIFY(m_house->searchOrigFiles({condition("OrigName", "YYY", true)}));
    QCOMPARE(m_house->origFileIds(), QVector<int>{900});
    m_house->database().run(QStringLiteral("DELETE FROM job_compress WHERE id = 900"));
    QVERIFY(m_house->searchOrigFiles({condition("OrigName", "YYY", true)}));
    QCOMPARE(m_house->total, 0);
    QVERIFY(m_house->isReady());
}

void TestColumnIndex::whatMayBeUndoneIsNotSeen()
{
    m_house->load();
    {
        Transaction undone(m_house->database());
        m_house->addFlow(901, QStringLiteral("web000901"));
        QCOMPARE(m_house->jobs("web"), 1); // by the statements
    }
    QCOMPARE(m_house->jobs("web"), 0);
    m_house->addFlow(902,
                     QStringLiteral("web000902")); // takes the number in the log again
    QCOMPARE(m_house->jobs("web"), 1);
    QVERIFY(m_house->isReady());
}

void TestColumnIndex::aUserSeesOnesOwn()
{
    m_house->load();
    m_house->assign("orig_file_assign", 5, 2);
    m_house->assign("pre_check_assign", 6, 2);
    m_house->set("job_flows", 7, "last_import_user_id", 2);
    m_house->actAs(2, {});
    QCOMPARE(m_house->jobs("A1B"), 3);
    QCOMPARE(m_house->flowIds(), (QVector<int>{5, 6, 7}));
    QVERIFY(m_house->searchOrigFiles({condition("OrigName", "", true)}));
    QCOMPARE(m_house->origFileIds(), QVector<int>{5});
    m_house->actAs(3, {});
    QCOMPARE(m_house->jobs("A1B"), 0);
    m_house->actAs(0, {});
    QCOMPARE(m_house->jobs("A1B"), 0);
    m_house->actAs(3, {Role::TestAdmin});
    QCOMPARE(m_house->jobs("A1B"), IndexHouse::flows);
    m_house->actAs(3, {Role::ShowCompanyName});
    QVERIFY(m_house->searchOrigFiles({condition("OrigName", "", true)}));
    QCOMPARE(m_house->total, IndexHouse::flows);
    QVERIFY(m_house->isReady());
}

void TestColumnIndex::renamedPeopleAndCustomersAreFound()
{
    m_house->load();
    m_house->assign("orig_file_assign", 5, 2);
    const auto executor = [this](const std::string &name) {
        return m_house->searchFlows({condition("PreUserRealName_OFAssign_Executor", name, true)})
                   ? m_house->total
                   : -1;
    };
    QCOMPARE(executor("张"), 1);
    m_house->set("users", 2, "real_name", QStringLiteral("李四"));
    QCOMPARE(executor("张"), 0);
    QCOMPARE(executor("李"), 1);
    m_house->set("customers", 1, "superior_1", QStringLiteral("Northern Group"));
    QVERIFY(m_house->searchOrigFiles({condition("SuperiorCo1", "northern", true)}));
    QCOMPARE(m_house->total, IndexHouse::flows);
    QVERIFY(m_house->isReady());
}

void TestColumnIndex::aRowDatedBackMoves()
{
    m_house->load();
    const auto oldest = [this] {
        auto list = List{condition("KoJobName", "", true)};
        list.push_back(list.back());
        list.back().sortEnabled = 1;
        list.back().sortField = "Flow_CreateTime";
        list.back().pageEnabled = 1;
        list.back().pageStart = "0";
        list.back().pageSize = "2";
        return m_house->searchFlows(list) ? m_house->flowIds() : QVector<int>();
    };
    QCOMPARE(oldest(), (QVector<int>{1, 2}));
    m_house->set("job_flows", 100, "create_time", QStringLiteral("2019-01-01T00:00:00.000Z"));
    QCOMPARE(oldest(), (QVector<int>{100, 1}));
    QVERIFY(m_house->isReady());
}

void TestColumnIndex::anUnknownFieldIsForTheStatements()
{
    m_house->load();
    QVERIFY(m_house->searchFlows({condition("Flow_OrigUploadTime", "T00:00:05", true)}));
    QCOMPARE(m_house->flowIds(), QVector<int>{5});
    QVERIFY(m_house->isReady());
}

void TestColumnIndex::oddRecordsAreForTheStatements_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("no time") << QStringLiteral("create_time") << QVariant(QStringLiteral("?"));
    if (TestDatabase::isServer())
        return; // its columns take nothing else
    QTest::newRow("a text as number")
        << QStringLiteral("batch_number") << QVariant(QStringLiteral("many"));
    QTest::newRow("a fraction") << QStringLiteral("batch_number") << QVariant(1.5);
    QTest::newRow("a NUL") << QStringLiteral("tips") << QVariant(QString(QChar(0)));
    QTest::newRow("bytes") << QStringLiteral("tips") << QVariant(QByteArray("bytes"));
}

void TestColumnIndex::oddRecordsAreForTheStatements()
{
    QFETCH(QString, column);
    QFETCH(QVariant, value);
    IndexHouse::expectWarning(QStringLiteral("job_flows with id 3: %1 holds").arg(column));
    m_house->load();
    m_house->set("job_flows", 3, column.toLatin1().constData(), value);
    QCOMPARE(m_house->jobs("A1B"), IndexHouse::flows); // it cannot follow
    m_house->index().load();
    QCOMPARE(m_house->index().status().state, IndexStatus::State::Failed);
    QCOMPARE(m_house->jobs("A1B"), IndexHouse::flows);
}

void TestColumnIndex::aLostDatabaseIsNoFailure()
{
    IndexHouse::expectWarning();
    DatabaseSettings settings = m_house->database().settings();
    settings.path += QStringLiteral(".gone");
    settings.name += QStringLiteral("_gone");
    m_house->renewIndex(IndexHouse::options(), settings);
    m_house->index().load();
    QCOMPARE(m_house->index().status().state, IndexStatus::State::Failed);
    QCOMPARE(m_house->jobs("A1B"), IndexHouse::flows);
}

void TestColumnIndex::itStopsWhileItLoads()
{
    for (int i = 0; i < 10; ++i) {
        m_house->renewIndex();
        QCOMPARE(m_house->jobs("A1B"), IndexHouse::flows);
        m_house->removeIndex();
    }
}

void TestColumnIndex::itTellsItsSize()
{
    m_house->load();
    const IndexStatus status = m_house->index().status();
    QCOMPARE(status.flows, IndexHouse::flows);
    QCOMPARE(status.origFiles, IndexHouse::flows);
    QVERIFY(status.bytes > IndexHouse::flows * 20);
    QVERIFY(status.loadMilliseconds > 0);
}

KODMS_TEST_MAIN(TestColumnIndex, QCoreApplication)
#include "TestColumnIndex.moc"
