// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/records/support/Lists.h"
#include "tests/records/support/ViewFixture.h"
#include "tests/support/TestMain.h"

#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// What condition lists mean.
class TestConditionLists : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void caseIsIgnoredForLatinLettersOnly();
    void anEmptyFuzzyValueMatchesEveryRow();
    void anExactTextMatchesTheWholeText();
    void numbersAreComparedAsNumbers_data();
    void numbersAreComparedAsNumbers();
    void aFuzzyNumberComparesItsDigits();
    void andBindsTighterThanOr();
    void bracketsGoFirst();
    void theStatusFilterShowsWhatTheDeskAsksFor();
    void aRepeatedSortRecordIsNotApplied();
    void joinAndBracketAloneMakeASortRecordDiffer();
    void aDifferingSortRecordIsApplied_data();
    void aDifferingSortRecordIsApplied();
    void ordersAreStable();
    void pagesNeverOverlap();
    void theCountIgnoresPageAndOrder();
    void theCountListCountsForItself();
    void anEmptyListMeansEverything();

private:
    std::unique_ptr<ViewFixture> m_fixture;
};

void TestConditionLists::init()
{
    m_fixture = std::make_unique<ViewFixture>();
}

void TestConditionLists::caseIsIgnoredForLatinLettersOnly()
{
    m_fixture->addFlow(1, QStringLiteral("ABCé"));
    m_fixture->addFlow(2, QStringLiteral("abcÉ"));
    QVERIFY(m_fixture->searchFlows({condition("KoJobName", "aBc", true)}));
    QCOMPARE(m_fixture->total, 2);
    QVERIFY(m_fixture->searchFlows({condition("KoJobName", u8"cÉ", true)}));
    QCOMPARE(m_fixture->flowIds(), QVector<int>{2});
}

void TestConditionLists::anEmptyFuzzyValueMatchesEveryRow()
{
    m_fixture->addFlow(1, QStringLiteral("A1B000001")); // nobody is assigned: the name is null
    QVERIFY(m_fixture->searchFlows({condition("PreUserRealName_OFAssign_Executor", "", true)}));
    QCOMPARE(m_fixture->total, 1);
    QVERIFY(m_fixture->searchFlows({condition("OFAssign_ExecutorId", "", true)}));
    QCOMPARE(m_fixture->total, 1);
    QVERIFY(m_fixture->searchFlows({condition("OFAssign_ExecutorId", "", false)}));
    QCOMPARE(m_fixture->total, 0);
}

void TestConditionLists::anExactTextMatchesTheWholeText()
{
    m_fixture->addFlow(1, QStringLiteral("A1B000001"));
    QVERIFY(m_fixture->searchFlows({condition("KoJobName", "A1B00000", false)}));
    QCOMPARE(m_fixture->total, 0);
    QVERIFY(m_fixture->searchFlows({condition("KoJobName", "a1b000001", false)}));
    QCOMPARE(m_fixture->total, 0);
    QVERIFY(m_fixture->searchFlows({condition("KoJobName", "A1B000001", false)}));
    QCOMPARE(m_fixture->total, 1);
}

void TestConditionLists::numbersAreComparedAsNumbers_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("found");
    QTest::newRow("plain") << QStringLiteral("12") << 1;
    QTest::newRow("spaces around") << QStringLiteral(" 12 ") << 1;
    QTest::newRow("plus sign") << QStringLiteral("+12") << 1;
    QTest::newRow("leading zeros") << QStringLiteral("0012") << 1;
    QTest::newRow("zero fraction") << QStringLiteral("12.00") << 1;
    QTest::newRow("part of it") << QStringLiteral("1") << 0;
    QTest::newRow("fraction") << QStringLiteral("12.5") << 0;
    QTest::newRow("negative") << QStringLiteral("-12") << 0;
    QTest::newRow("letters") << QStringLiteral("12a") << 0;
    QTest::newRow("words") << QStringLiteral("twelve") << 0;
    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("sign alone") << QStringLiteral("-") << 0;
    QTest::newRow("exponent") << QStringLiteral("12e0") << 0;
    QTest::newRow("too large") << QStringLiteral("99999999999999999999") << 0;
    QTest::newRow("attack") << QStringLiteral("12 OR 1=1") << 0;
}

void TestConditionLists::numbersAreComparedAsNumbers()
{
    QFETCH(QString, value);
    QFETCH(int, found);
    m_fixture->addFlow(12, QStringLiteral("A1B000012"));
    m_fixture->addFlow(13, QStringLiteral("12"), QStringLiteral("12"));
    m_fixture->set("job_flows", 12, "batch_number", 12);
    QVERIFY(m_fixture->searchFlows({condition("Flow_UploadBatchNum", value.toStdString(), false)}));
    QCOMPARE(m_fixture->total, found);
    QVERIFY(m_fixture->searchOrigFiles({condition("JobSerialNumber", value.toStdString(), false)}));
    QCOMPARE(m_fixture->total, found);
    auto asNumber = condition("OrigName", value.toStdString(), false);
    asNumber.numericValue = 1;
    QVERIFY(m_fixture->searchOrigFiles({asNumber}));
    QCOMPARE(m_fixture->total, found);
}

void TestConditionLists::aFuzzyNumberComparesItsDigits()
{
    m_fixture->addFlow(1, QStringLiteral("A"));
    m_fixture->addFlow(2, QStringLiteral("B"));
    m_fixture->set("job_flows", 1, "batch_number", 1207);
    m_fixture->set("job_flows", 2, "batch_number", 127);
    QVERIFY(m_fixture->searchFlows({condition("Flow_UploadBatchNum", "20", true)}));
    QCOMPARE(m_fixture->flowIds(), QVector<int>{1});
    QVERIFY(m_fixture->searchFlows({condition("Flow_UploadBatchNum", "x", true)}));
    QCOMPARE(m_fixture->total, 0);
}

void TestConditionLists::andBindsTighterThanOr()
{
    for (int id = 1; id <= 3; ++id)
        m_fixture->addFlow(id, QStringLiteral("J%1").arg(id));
    // J1, or J2 and batch 5 (which J2 has not)
    QVERIFY(m_fixture->searchFlows({condition("KoJobName", "J1", false),
                                    either(condition("KoJobName", "J2", false)),
                                    condition("Flow_UploadBatchNum", "5", false)}));
    QCOMPARE(m_fixture->flowIds(), QVector<int>{1});
    // batch 5 and J2, or J1
    QVERIFY(m_fixture->searchFlows({condition("Flow_UploadBatchNum", "5", false),
                                    condition("KoJobName", "J2", false),
                                    either(condition("KoJobName", "J1", false))}));
    QCOMPARE(m_fixture->flowIds(), QVector<int>{1});
}

void TestConditionLists::bracketsGoFirst()
{
    for (int id = 1; id <= 3; ++id)
        m_fixture->addFlow(id, QStringLiteral("J%1").arg(id));
    auto opening = condition("KoJobName", "J1", false);
    opening.openBracket = 1;
    auto closing = either(condition("KoJobName", "J2", false));
    closing.closeBracket = 2;
    QVERIFY(
        m_fixture->searchFlows({opening, closing, condition("Flow_UploadBatchNum", "5", false)}));
    QCOMPARE(m_fixture->total, 0);
    QVERIFY(
        m_fixture->searchFlows({opening, closing, condition("Flow_UploadBatchNum", "0", false)}));
    QCOMPARE(m_fixture->total, 2);
}

void TestConditionLists::theStatusFilterShowsWhatTheDeskAsksFor()
{
    const int pairs[][2] = {{0, 0}, {1, 0}, {1, 1}, {1, 2}, {2, 0}, {2, 1}, {2, 2}, {3, 2}};
    for (int i = 0; i < 8; ++i) {
        m_fixture->addFlow(i + 1, QStringLiteral("J%1").arg(i + 1));
        m_fixture->set("job_flows", i + 1, "flow_status", pairs[i][0]);
        m_fixture->set("job_flows", i + 1, "check_flag", pairs[i][1]);
    }
    QVERIFY(m_fixture->searchFlows({condition("Flow_CheckFlag", "1", true)}));
    QCOMPARE(m_fixture->flowIds(), (QVector<int>{3, 6}));
    QVERIFY(m_fixture->searchFlows({condition("Flow_CheckFlag", "3", true)}));
    QCOMPARE(m_fixture->total, 0);
    // status 2, or status 3 and flag 2: the order history
    auto first = condition("Flow_FlowStatus", "2", true);
    first.openBracket = 1;
    auto last = condition("Flow_CheckFlag", "2", true);
    last.closeBracket = 2;
    QVERIFY(m_fixture->searchFlows({first, either(condition("Flow_FlowStatus", "3", true)), last}));
    QCOMPARE(m_fixture->flowIds(), (QVector<int>{5, 6, 7, 8}));
}

void TestConditionLists::aRepeatedSortRecordIsNotApplied()
{
    m_fixture->addFlow(1, QStringLiteral("J1"));
    m_fixture->addFlow(2, QStringLiteral("J2"));
    // The repetition carries a closing bracket and another match, and is joined by OR.
    auto opening = condition("KoJobName", "J1", false);
    opening.openBracket = 1;
    auto closing = either(condition("KoJobName", "J2", false));
    closing.closeBracket = 2;
    List list = sorted({opening, closing});
    list.back().fuzzy = 1;
    QVERIFY(m_fixture->searchFlows(list));
    QCOMPARE(m_fixture->flowIds(), (QVector<int>{2, 1}));
}

void TestConditionLists::joinAndBracketAloneMakeASortRecordDiffer()
{
    m_fixture->addFlow(1, QStringLiteral("J1"));
    m_fixture->addFlow(2, QStringLiteral("J2"));
    List list = sorted({condition("KoJobName", "J1", false), condition("KoJobName", "J", true)});
    QVERIFY(m_fixture->searchFlows(list));
    QCOMPARE(m_fixture->flowIds(), (QVector<int>{1}));
    list.back().orWithPrevious = 1;
    QVERIFY(m_fixture->searchFlows(list));
    QCOMPARE(m_fixture->flowIds(), (QVector<int>{2, 1}));
    auto opening = condition("KoJobName", "J1", false);
    opening.openBracket = 1;
    list = sorted({opening});
    list.back().openBracket = 0;
    list.back().closeBracket = 2;
    QVERIFY(m_fixture->searchFlows(list));
    QCOMPARE(m_fixture->flowIds(), (QVector<int>{1}));
}

void TestConditionLists::aDifferingSortRecordIsApplied_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("join");
    QTest::addColumn<int>("found");
    QTest::newRow("same") << "KoJobName"
                          << "J" << 0 << 2;
    QTest::newRow("another value") << "KoJobName"
                                   << "J1" << 0 << 1;
    QTest::newRow("another field") << "Flow_Tips"
                                   << "J" << 0 << 0;
    QTest::newRow("another join and value") << "KoJobName"
                                            << "K" << 1 << 2;
}

void TestConditionLists::aDifferingSortRecordIsApplied()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    QFETCH(int, join);
    QFETCH(int, found);
    m_fixture->addFlow(1, QStringLiteral("J1"));
    m_fixture->addFlow(2, QStringLiteral("J2"));
    List list = sorted({condition("KoJobName", "J", true)});
    list.back().fieldName = field.toStdString();
    list.back().value = value.toStdString();
    list.back().orWithPrevious = join;
    QVERIFY(m_fixture->searchFlows(list));
    QCOMPARE(m_fixture->total, found);
}

void TestConditionLists::ordersAreStable()
{
    for (int id = 1; id <= 4; ++id)
        m_fixture->addFlow(id, QStringLiteral("J%1").arg(id));
    for (int id : {2, 3})
        m_fixture->set("job_flows", id, "create_time", QStringLiteral("2026-12-01T00:00:00.000Z"));
    QVERIFY(m_fixture->searchFlows(sorted({condition("KoJobName", "J", true)}, 1)));
    QCOMPARE(m_fixture->flowIds(), (QVector<int>{3, 2, 4, 1}));
    QVERIFY(m_fixture->searchFlows(sorted({condition("KoJobName", "J", true)}, 0)));
    QCOMPARE(m_fixture->flowIds(), (QVector<int>{1, 4, 2, 3}));
    QVERIFY(m_fixture->searchFlows({condition("KoJobName", "J", true)}));
    QCOMPARE(m_fixture->flowIds(), (QVector<int>{1, 2, 3, 4}));
}

void TestConditionLists::pagesNeverOverlap()
{
    for (int id = 1; id <= 31; ++id) {
        m_fixture->addFlow(id, QStringLiteral("J%1").arg(id));
        m_fixture->set("job_flows", id, "create_time", QStringLiteral("2026-12-01T00:00:00.000Z"));
    }
    const List list = sorted({condition("KoJobName", "J", true)});
    QVERIFY(m_fixture->searchFlows(paged(list, "0", "30"), list));
    QCOMPARE(m_fixture->flows.size(), std::size_t(30));
    QCOMPARE(m_fixture->total, 31);
    QCOMPARE(m_fixture->flowIds().last(), 2);
    QVERIFY(m_fixture->searchFlows(paged(list, "30", "30"), list));
    QCOMPARE(m_fixture->flowIds(), QVector<int>{1});
    QCOMPARE(m_fixture->total, 31);
    QVERIFY(m_fixture->searchFlows(paged(list, "60", "30"), list));
    QVERIFY(m_fixture->flows.empty());
    QCOMPARE(m_fixture->total, 31);
    QVERIFY(m_fixture->searchFlows(paged(list, "0", "0"), list));
    QVERIFY(m_fixture->flows.empty());
    QCOMPARE(m_fixture->total, 31);
    QVERIFY(m_fixture->searchFlows(list, list)); // no window: every row, more than one chunk
    QCOMPARE(m_fixture->flows.size(), std::size_t(31));
}

void TestConditionLists::theCountIgnoresPageAndOrder()
{
    for (int id = 1; id <= 5; ++id)
        m_fixture->addFlow(id, QStringLiteral("J%1").arg(id));
    const List list = paged(sorted({condition("KoJobName", "J", true)}), "2", "2");
    QVERIFY(m_fixture->searchFlows(list, list));
    QCOMPARE(m_fixture->flowIds(), (QVector<int>{3, 2}));
    QCOMPARE(m_fixture->total, 5);
}

void TestConditionLists::theCountListCountsForItself()
{
    for (int id = 1; id <= 5; ++id)
        m_fixture->addFlow(id, QStringLiteral("J%1").arg(id));
    QVERIFY(m_fixture->searchFlows({condition("KoJobName", "J2", false)},
                                   {condition("KoJobName", "J", true)}));
    QCOMPARE(m_fixture->flowIds(), QVector<int>{2});
    QCOMPARE(m_fixture->total, 5);
}

void TestConditionLists::anEmptyListMeansEverything()
{
    m_fixture->addFlow(1, QStringLiteral("J1"));
    QVERIFY(m_fixture->searchFlows({}));
    QCOMPARE(m_fixture->total, 1);
}

KODMS_TEST_MAIN(TestConditionLists, QCoreApplication)
#include "TestConditionLists.moc"
