// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Dialect.h"
#include "services/records/RecordContext.h"
#include "tests/records/support/RandomConditions.h"
#include "tests/records/support/RandomRecords.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/search/support/IndexComparison.h"
#include "tests/search/support/RandomChanges.h"
#include "tests/support/TestMain.h"

#include <QLoggingCategory>
#include <QProcess>
#include <QTest>

#include <limits>

using namespace KODMS::Services;
using namespace KODMS::Tests;

Q_DECLARE_METATYPE(KODMS::Tests::SearchOracle::View)

/// Random condition lists over random records, while these change: the index, the
/// statements and a plain look at every row find the same.
class TestIndexOracle : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void changedBySession_data() { views(); }

    void changedBySession();

    void changedByAnotherProcess_data() { views(); }

    void changedByAnotherProcess();

private:
    static void views();
    /// So many lists for each view and test.
    static constexpr int lists = KODMS_LISTS / 4;
};

namespace {

ColumnIndex::Options segments()
{
    ColumnIndex::Options options;
    options.smallestTable = 0;
    options.segmentRows = KODMS_SEGMENT_ROWS;
    options.mostRefusals = std::numeric_limits<int>::max(); // it is all about these
    return options;
}

/// A database of random records with an index.
struct House {
    explicit House(quint32 seed)
    {
        RandomRecords(seed, KODMS_MOST_PIECES).fill(*temp, KODMS_FLOWS);
        context = std::make_unique<RecordContext>(temp.take());
    }

    TempDatabase temp;
    std::unique_ptr<RecordContext> context;
    ColumnIndex index{temp.settings(), segments()};
};

/// A list and the one to count by, which nearly always asks the same.
std::pair<SearchOracle::List, SearchOracle::List> question(RandomConditions &random, int number)
{
    SearchOracle::List counted = random.list();
    SearchOracle::List conditions = number % 16 == 0 ? random.list() : counted;
    random.addPage(conditions);
    return {conditions, counted};
}

} // namespace

/// Of values that are no texts.
void TestIndexOracle::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("kodms.records.warning=false"));
}

void TestIndexOracle::views()
{
    QTest::addColumn<SearchOracle::View>("view");
    QTest::newRow("flows") << SearchOracle::View::Flow;
    QTest::newRow("original files") << SearchOracle::View::OrigFile;
}

void TestIndexOracle::changedBySession()
{
    QFETCH(SearchOracle::View, view);
    constexpr int between = 25;
    House house(20261121);
    RandomChanges changes(house.context->database(), 7);
    IndexComparison comparison(*house.context, house.index, view);
    int found = 0;
    for (int i = 0; i < lists; i += between) {
        const SearchOracle oracle(view, house.context->database());
        RandomConditions random(oracle, static_cast<quint32>(i), IndexComparison::fields(view),
                                IndexComparison::orders(view));
        for (int j = 0; j < between; ++j) {
            const auto [conditions, counted] = question(random, j);
            house.context->setActor(random.actor());
            const QString difference = comparison.difference(conditions, counted);
            QVERIFY2(difference.isEmpty(), qPrintable(difference));
            const auto expected = oracle.ask(conditions, counted, house.context->actor());
            QVERIFY2(expected.ids == comparison.answer().ids &&
                         expected.count == comparison.answer().count,
                     qPrintable(describe(conditions)));
            found += expected.ids.isEmpty() ? 0 : 1;
        }
        changes.step();
    }
    QVERIFY2(found > lists / 3, qPrintable(QString::number(found)));
    QVERIFY2(comparison.answered() > lists * 9 / 10,
             qPrintable(QString::number(comparison.answered())));
    if (house.context->database().dialect().tellsMoments())
        QVERIFY(comparison.answeredOutside() > 0);
}

void TestIndexOracle::changedByAnotherProcess()
{
    QFETCH(SearchOracle::View, view);
    House house(20261122);
    const SearchOracle before(view, house.context->database());
    RandomConditions random(before, 3, IndexComparison::fields(view),
                            IndexComparison::orders(view));
    IndexComparison comparison(*house.context, house.index, view);
    QProcess writer;
    writer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    writer.start(QStringLiteral(KODMS_SEARCH_WRITER),
                 {house.temp.place(), QString::number(lists / 2)});
    QVERIFY(writer.waitForStarted());
    int asked = 0;
    const auto ask = [&] {
        const auto [conditions, counted] = question(random, asked);
        house.context->setActor(random.actor());
        ++asked;
        return comparison.difference(conditions, counted);
    };
    while (asked < lists || writer.state() != QProcess::NotRunning) {
        const QString difference = ask();
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
        writer.waitForFinished(0);
    }
    QCOMPARE(writer.exitStatus(), QProcess::NormalExit);
    QCOMPARE(writer.exitCode(), 0);
    QVERIFY2(comparison.answered() > asked / 2, qPrintable(QString::number(comparison.answered())));
    QCOMPARE(ask(), QString()); // the last change may have made everything be read again
    const int answeredBefore = comparison.answered();
    QCOMPARE(ask(), QString());
    QCOMPARE(comparison.answered(), answeredBefore + 1);
}

KODMS_TEST_MAIN(TestIndexOracle, QCoreApplication)
#include "TestIndexOracle.moc"
