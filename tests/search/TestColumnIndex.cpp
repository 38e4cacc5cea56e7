// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Transaction.h"
#include "services/search/ColumnIndex.h"
#include "tests/records/support/ViewFixture.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

/// Searches take longer then, which whoever looks after the installation should know.
void expectWarning(const QString &why = {})
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^column index: ") + why));
}

} // namespace

/// The view services with an index behind them.
class TestColumnIndex : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theStatementsAnswerUntilItIsThere();
    void aSmallInstallationNeedsNone();
    void aChangeOfOnesOwnIsSeen();
    void whatMayBeUndoneIsNotSeen();
    void aUserSeesOnesOwn();
    void renamedPeopleAndCustomersAreFound();
    void aRowDatedBackMoves();
    void theLogSaysReadEverything();
    void aLostEntryIsNoticed();
    void anEntryOfAnotherHistoryIsNoticed();
    void aTrimmedLogIsFollowed();
    void manyChangesAreReadTogether();
    void moreChangesAreReadInTheBackground();
    void whatIsOfNoUseIsNotReadForEver();
    void anUnknownFieldIsForTheStatements();
    void oddRecordsAreForTheStatements_data();
    void oddRecordsAreForTheStatements();
    void aLostDatabaseIsNoFailure();
    void aLostLogIsNoFailure();
    void itStopsWhileItLoads();
    void itTellsItsSize();

private:
    static constexpr int flows = 120;

    static ColumnIndex::Options options(int smallestTable = 0)
    {
        ColumnIndex::Options options;
        options.smallestTable = smallestTable;
        options.segmentRows = 32;
        return options;
    }

    void load();

    bool isReady() const { return m_index->status().state == IndexStatus::State::Ready; }

    /// Jobs whose name contains the text, counted.
    int jobs(const std::string &part)
    {
        return m_house->searchFlows({condition("KoJobName", part, true)}) ? m_house->total : -1;
    }

    std::unique_ptr<ViewFixture> m_house;
    std::unique_ptr<ColumnIndex> m_index;
};

void TestColumnIndex::init()
{
    m_house = std::make_unique<ViewFixture>();
    m_house->addUser(2, QStringLiteral("张三"));
    m_house->addUser(3, QStringLiteral("Li Si"));
    Transaction together(m_house->database());
    for (int id = 1; id <= flows; ++id)
        m_house->addFlow(id, QStringLiteral("A1B%1").arg(id, 6, 10, QLatin1Char('0')));
    together.commit();
    m_index = std::make_unique<ColumnIndex>(m_house->database().settings(), options());
    m_house->context().setViewIndex(m_index.get());
}

void TestColumnIndex::cleanup()
{
    m_index.reset();
    m_house.reset();
}

void TestColumnIndex::load()
{
    m_index->load();
    QVERIFY(isReady());
}

void TestColumnIndex::theStatementsAnswerUntilItIsThere()
{
    QCOMPARE(m_index->status().state, IndexStatus::State::Off);
    QCOMPARE(jobs("a1b0000"), 99);
    QVERIFY(m_index->status().state != IndexStatus::State::Off); // the first search began it
    QTRY_VERIFY_WITH_TIMEOUT((jobs("a1b0000") == 99 && isReady()), 30000);
    QCOMPARE(jobs("a1b00012"), 1);
    QCOMPARE(m_house->flowIds(), QVector<int>{120});
}

void TestColumnIndex::aSmallInstallationNeedsNone()
{
    m_index = std::make_unique<ColumnIndex>(m_house->database().settings(), options(flows + 1));
    m_house->context().setViewIndex(m_index.get());
    QCOMPARE(jobs("A1B"), flows);
    QCOMPARE(m_index->status().state, IndexStatus::State::Off);
    m_house->addFlow(flows + 1, QStringLiteral("A1B000121"));
    QCOMPARE(jobs("A1B"), flows + 1);
    QVERIFY(m_index->status().state != IndexStatus::State::Off);
}

void TestColumnIndex::aChangeOfOnesOwnIsSeen()
{
    load();
    m_house->addFlow(900, QStringLiteral("web000900"), QStringLiteral("panel"));
    QCOMPARE(jobs("WEB"), 1);
    m_house->set("job_flows", 900, "batch_number", 77);
    QVERIFY(m_house->searchFlows({condition("Flow_UploadBatchNum", "77", false)}));
    QCOMPARE(m_house->flowIds(), QVector<int>{900});
    m_house->set("job_compress", 900, "orig_name", QString(5000, QLatin1Char('y')));
    QVERIFY(m_house->searchOrigFiles({condition("OrigName", "YYY", true)}));
    QCOMPARE(m_house->origFileIds(), QVector<int>{900});
    m_house->database().run(QStringLiteral("DELETE FROM job_compress WHERE id = 900"));
    QVERIFY(m_house->searchOrigFiles({condition("OrigName", "YYY", true)}));
    QCOMPARE(m_house->total, 0);
    QVERIFY(isReady());
}

void TestColumnIndex::whatMayBeUndoneIsNotSeen()
{
    load();
    {
        Transaction undone(m_house->database());
        m_house->addFlow(901, QStringLiteral("web000901"));
        QCOMPARE(jobs("web"), 1); // by the statements
    }
    QCOMPARE(jobs("web"), 0);
    m_house->addFlow(902, QStringLiteral("web000902")); // takes the number in the log again
    QCOMPARE(jobs("web"), 1);
    QVERIFY(isReady());
}

void TestColumnIndex::aUserSeesOnesOwn()
{
    load();
    m_house->assign("orig_file_assign", 5, 2);
    m_house->assign("pre_check_assign", 6, 2);
    m_house->set("job_flows", 7, "last_import_user_id", 2);
    m_house->actAs(2, {});
    QCOMPARE(jobs("A1B"), 3);
    QCOMPARE(m_house->flowIds(), (QVector<int>{5, 6, 7}));
    QVERIFY(m_house->searchOrigFiles({condition("OrigName", "", true)}));
    QCOMPARE(m_house->origFileIds(), QVector<int>{5});
    m_house->actAs(3, {});
    QCOMPARE(jobs("A1B"), 0);
    m_house->actAs(0, {});
    QCOMPARE(jobs("A1B"), 0);
    m_house->actAs(3, {Role::TestAdmin});
    QCOMPARE(jobs("A1B"), flows);
    m_house->actAs(3, {Role::ShowCompanyName});
    QVERIFY(m_house->searchOrigFiles({condition("OrigName", "", true)}));
    QCOMPARE(m_house->total, flows);
    QVERIFY(isReady());
}

void TestColumnIndex::renamedPeopleAndCustomersAreFound()
{
    load();
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
    QCOMPARE(m_house->total, flows);
    QVERIFY(isReady());
}

void TestColumnIndex::aRowDatedBackMoves()
{
    load();
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
    QVERIFY(isReady());
}

void TestColumnIndex::theLogSaysReadEverything()
{
    load();
    m_house->database().run(
        QStringLiteral("INSERT INTO change_log (kind, row_id, op) VALUES (0, 0, 2)"));
    m_house->database().run(TestDatabase::isServer()
                                ? QStringLiteral("DROP TRIGGER jobs_log ON jobs")
                                : QStringLiteral("DROP TRIGGER jobs_update_log"));
    m_house->database().run(QStringLiteral("UPDATE jobs SET layer_count = 17 WHERE id = 4"));
    const List seventeen{condition("JobTable_LayerCount", "17", false)};
    QVERIFY(m_house->searchFlows(seventeen));
    QCOMPARE(m_house->total, 1);
    QVERIFY(!isReady());
    load();
    QVERIFY(m_house->searchFlows(seventeen));
    QCOMPARE(m_house->total, 1);
    QVERIFY(isReady());
}

void TestColumnIndex::aLostEntryIsNoticed()
{
    load();
    m_house->addFlow(900, QStringLiteral("web000900"));
    m_house->database().run(QStringLiteral("DELETE FROM change_log"));
    QCOMPARE(jobs("web"), 1);
    QVERIFY(!isReady());
    load();
    m_house->addFlow(901, QStringLiteral("web000901")); // after a log without any entry
    QCOMPARE(jobs("web"), 2);
    load();
    QCOMPARE(jobs("web"), 2);
    QVERIFY(isReady());
}

/// The database went back in time, and then on: the number was given out once more.
void TestColumnIndex::anEntryOfAnotherHistoryIsNoticed()
{
    load();
    m_house->addFlow(900, QStringLiteral("web000900"));
    QCOMPARE(jobs("web"), 1);
    QVERIFY(isReady());
    m_house->database().run(
        QStringLiteral("UPDATE change_log SET row_id = 5%1 "
                       "WHERE seq = (SELECT max(seq) FROM change_log)")
            .arg(TestDatabase::isServer() ? QStringLiteral(", xid = '3'") : QString()));
    QCOMPARE(jobs("web"), 1);
    QVERIFY(!isReady());
    load();
    QCOMPARE(jobs("web"), 1);
    QVERIFY(isReady());
}

void TestColumnIndex::aTrimmedLogIsFollowed()
{
    load();
    const QString trim = QStringLiteral("DELETE FROM change_log "
                                        "WHERE seq <= (SELECT max(seq) FROM change_log) - %1");
    m_house->database().run(trim.arg(10));
    m_house->addFlow(900, QStringLiteral("web000900"));
    QCOMPARE(jobs("web"), 1);
    QVERIFY(isReady());
    m_house->addFlow(901, QStringLiteral("web000901"));
    m_house->addFlow(902, QStringLiteral("web000902"));
    m_house->database().run(trim.arg(1)); // with entries that are not known
    QCOMPARE(jobs("web"), 3);
    QVERIFY(!isReady());
    load();
    QCOMPARE(jobs("web"), 3);
    QVERIFY(isReady());
}

void TestColumnIndex::manyChangesAreReadTogether()
{
    load();
    m_house->addUser(4, QStringLiteral("王五"));
    for (int id = 1; id <= flows; id += 2)
        m_house->assign("orig_file_assign", id, 4);
    m_house->set("users", 2, "real_name", QStringLiteral("李四"));
    m_house->database().run(
        QStringLiteral("UPDATE job_flows SET tips = 'together', batch_number = id"));
    m_house->database().run(QStringLiteral("DELETE FROM job_compress WHERE id > 100"));
    QVERIFY(m_house->searchFlows({condition("Flow_Tips", "TOGETHER", true)}));
    QCOMPARE(m_house->total, flows);
    QVERIFY(m_house->searchFlows({condition("Flow_UploadBatchNum", "77", false)}));
    QCOMPARE(m_house->flowIds(), QVector<int>{77});
    QVERIFY(m_house->searchFlows({condition("PreUserRealName_OFAssign_Executor", "五", true)}));
    QCOMPARE(m_house->total, flows / 2);
    QVERIFY(m_house->searchOrigFiles({condition("OrigName", "board", true)}));
    QCOMPARE(m_house->total, 100);
    QVERIFY(isReady());
}

/// What is known is kept, and only what has changed is read: a change that the log does not
/// tell of is not.
void TestColumnIndex::moreChangesAreReadInTheBackground()
{
    load();
    Database &database = m_house->database();
    database.run(TestDatabase::isServer() ? QStringLiteral("DROP TRIGGER jobs_log ON jobs")
                                          : QStringLiteral("DROP TRIGGER jobs_update_log"));
    database.run(QStringLiteral("UPDATE jobs SET layer_count = 17 WHERE id = 4"));
    for (int i = 0; i <= ColumnIndex::mostChanges / flows; ++i)
        database.run(QStringLiteral("UPDATE job_compress SET tips = 'often' "));
    const auto often = [this] {
        return m_house->searchOrigFiles({condition("FileTips", "often", true)}) ? m_house->total
                                                                                : -1;
    };
    QCOMPARE(often(), flows);
    QVERIFY(!isReady()); // the statements answered
    QTRY_VERIFY_WITH_TIMEOUT((often() == flows && isReady()), 30000);
    QVERIFY(m_house->searchFlows({condition("JobTable_LayerCount", "17", false)}));
    QCOMPARE(m_house->total, 0);
}

void TestColumnIndex::whatIsOfNoUseIsNotReadForEver()
{
    expectWarning();
    for (int i = 0; i <= options().mostRefusals; ++i) {
        m_index->load();
        QVERIFY(isReady());
        m_house->database().run(
            QStringLiteral("INSERT INTO change_log (kind, row_id, op) VALUES (0, 0, 2)"));
        QCOMPARE(jobs("A1B"), flows);
        QVERIFY(!isReady());
    }
    QCOMPARE(m_index->status().state, IndexStatus::State::Failed);
    QCOMPARE(jobs("A1B"), flows);
    QCOMPARE(m_index->status().state, IndexStatus::State::Failed);
}

void TestColumnIndex::anUnknownFieldIsForTheStatements()
{
    load();
    QVERIFY(m_house->searchFlows({condition("Flow_OrigUploadTime", "T00:00:05", true)}));
    QCOMPARE(m_house->flowIds(), QVector<int>{5});
    QVERIFY(isReady());
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
    expectWarning(QStringLiteral("job_flows with id 3: %1 holds").arg(column));
    load();
    m_house->set("job_flows", 3, column.toLatin1().constData(), value);
    QCOMPARE(jobs("A1B"), flows); // it cannot follow
    m_index->load();
    QCOMPARE(m_index->status().state, IndexStatus::State::Failed);
    QCOMPARE(jobs("A1B"), flows);
}

void TestColumnIndex::aLostDatabaseIsNoFailure()
{
    expectWarning();
    DatabaseSettings settings = m_house->database().settings();
    settings.path += QStringLiteral(".gone");
    settings.name += QStringLiteral("_gone");
    m_index = std::make_unique<ColumnIndex>(settings, options());
    m_house->context().setViewIndex(m_index.get());
    m_index->load();
    QCOMPARE(m_index->status().state, IndexStatus::State::Failed);
    QCOMPARE(jobs("A1B"), flows);
}

/// The statements answer, and would say what is wrong if they could not.
void TestColumnIndex::aLostLogIsNoFailure()
{
    expectWarning();
    load();
    m_house->database().run(QStringLiteral("ALTER TABLE change_log RENAME TO gone"));
    QCOMPARE(jobs("A1B"), flows);
    QCOMPARE(m_index->status().state, IndexStatus::State::Failed);
    QCOMPARE(jobs("A1B"), flows);
}

void TestColumnIndex::itStopsWhileItLoads()
{
    for (int i = 0; i < 10; ++i) {
        m_index = std::make_unique<ColumnIndex>(m_house->database().settings(), options());
        m_house->context().setViewIndex(m_index.get());
        QCOMPARE(jobs("A1B"), flows);
        m_index.reset();
        m_house->context().setViewIndex(nullptr);
    }
}

void TestColumnIndex::itTellsItsSize()
{
    load();
    const IndexStatus status = m_index->status();
    QCOMPARE(status.flows, flows);
    QCOMPARE(status.origFiles, flows);
    QVERIFY(status.bytes > flows * 20);
    QVERIFY(status.loadMilliseconds > 0);
}

KODMS_TEST_MAIN(TestColumnIndex, QCoreApplication)
#include "TestColumnIndex.moc"
