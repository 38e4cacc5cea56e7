// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/TableSearch.h"
#include "tests/support/TestMain.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <map>

using namespace KODMS::Services;

/// A table that is changed at random holds what a plain map holds, in order, and gives
/// the same pages.
class TestIndexTable : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changesKeepRowsAndOrder();
    void pagesAreWindowsOfTheOrder_data();
    void pagesAreWindowsOfTheOrder();
    void segmentsStayFilled();
    void oneOfSomeIsOneOfMore();
    void theOrderOfConditionsChangesNothing();
};

namespace {

using Number = PackedColumn::Number;

IndexRow rowOf(Number id, Number time, Number number, const std::string &text)
{
    return {id, time, {number}, {text}};
}

/// Ids in the order of the table.
std::vector<Number> idsOf(const IndexTable &table)
{
    std::vector<Number> ids;
    for (const IndexSegment &segment : table.segments()) {
        for (int row = 0; row < segment.size(); ++row)
            ids.push_back(segment.idAt(row));
    }
    return ids;
}

std::vector<Number> idsOf(const std::map<Number, IndexRow> &rows)
{
    std::vector<std::pair<Number, Number>> keys;
    for (const auto &row : rows)
        keys.emplace_back(row.second.time, row.first);
    std::sort(keys.begin(), keys.end());
    std::vector<Number> ids;
    for (const auto &key : keys)
        ids.push_back(key.second);
    return ids;
}

bool holdsTheSame(const IndexTable &table, const std::map<Number, IndexRow> &rows)
{
    for (const IndexSegment &segment : table.segments()) {
        for (int place = 0; place < segment.size(); ++place) {
            const IndexRow &row = rows.at(segment.idAt(place));
            if (segment.numbers(0).at(place) != row.numbers[0] ||
                segment.texts(0).at(place) != row.texts[0] ||
                segment.keyAt(place).first != row.time)
                return false;
        }
    }
    return true;
}

} // namespace

void TestIndexTable::changesKeepRowsAndOrder()
{
    constexpr int segmentRows = 16;
    QRandomGenerator random(3);
    IndexTable table(1, 1, segmentRows);
    std::map<Number, IndexRow> expected;
    Number newest = 0;
    for (int round = 0; round < 600; ++round) {
        std::map<Number, std::optional<IndexRow>> changes;
        for (int i = random.bounded(1, round % 50 == 0 ? 60 : 4); i > 0; --i) {
            const Number id = random.bounded(3) == 0 ? ++newest : random.bounded(1, 400);
            if (random.bounded(4) == 0)
                changes[id] = std::nullopt;
            else
                changes[id] = rowOf(id, random.bounded(2) == 0 ? id : random.bounded(300),
                                    random.bounded(1000),
                                    std::string(static_cast<std::size_t>(random.bounded(40)), 'x'));
        }
        std::vector<IndexTable::Change> list;
        for (const auto &change : changes) {
            list.push_back({change.first, change.second});
            if (change.second)
                expected[change.first] = *change.second;
            else
                expected.erase(change.first);
        }
        table.apply(list);
        QCOMPARE(table.rows(), static_cast<int>(expected.size()));
        QVERIFY(idsOf(table) == idsOf(expected));
        QVERIFY(holdsTheSame(table, expected));
        for (const IndexSegment &segment : table.segments())
            QVERIFY(segment.size() > 0 && segment.size() <= segmentRows);
    }
    QVERIFY(table.segments().size() > 10);
}

void TestIndexTable::pagesAreWindowsOfTheOrder_data()
{
    QTest::addColumn<bool>("byTime");
    QTest::addColumn<bool>("isDescending");
    QTest::newRow("by time, oldest first") << true << false;
    QTest::newRow("by time, newest first") << true << true;
    QTest::newRow("by id") << false << false;
    QTest::newRow("by id, largest first") << false << true;
}

void TestIndexTable::pagesAreWindowsOfTheOrder()
{
    QFETCH(bool, byTime);
    QFETCH(bool, isDescending);
    IndexTable table(1, 1, 50);
    std::vector<Number> all;
    for (int i = 0; i < 500; ++i) {
        const Number id = (i * 7) % 500 + 1;
        table.append(rowOf(id, i / 3, i % 2, "x"));
        if (i % 2 == 1)
            all.push_back(id);
    }
    table.flush();
    if (!byTime)
        std::sort(all.begin(), all.end());
    if (isDescending)
        std::reverse(all.begin(), all.end());
    IndexCondition odd;
    odd.kind = IndexCondition::Kind::Number;
    odd.number = 1;
    TableSearch search(table);
    for (const std::int64_t offset : {0, 7, 30, 49, 240, 250, 9000}) {
        for (const std::int64_t size : {0, 1, 30, 100, 1000}) {
            TableSearch::Window window;
            window.order = byTime ? TableSearch::Order::Time : TableSearch::Order::Id;
            window.isDescending = isDescending;
            window.offset = offset;
            window.size = size;
            search.run(odd, window);
            const auto first = all.begin() + std::min<std::int64_t>(offset, 250);
            const auto last = first + std::min<std::int64_t>(size, all.end() - first);
            QCOMPARE(search.count(), std::int64_t{250});
            QVERIFY(search.ids() == std::vector<Number>(first, last));
        }
    }
}

/// New rows come at the end: they fill one segment after the other.
void TestIndexTable::segmentsStayFilled()
{
    IndexTable table(1, 1, 50);
    for (Number id = 1; id <= 500; ++id)
        table.apply({{id, rowOf(id, id, 0, "x")}});
    QCOMPARE(table.segments().size(), std::size_t{10});
    table.apply({{501, rowOf(501, 120, 0, "x")}});
    QCOMPARE(table.segments().size(), std::size_t{11});
}

namespace {

IndexCondition isNumber(Number number)
{
    IndexCondition condition;
    condition.kind = IndexCondition::Kind::Number;
    condition.number = number;
    return condition;
}

IndexCondition hasPart(const std::string &part)
{
    IndexCondition condition;
    condition.kind = IndexCondition::Kind::Text;
    condition.test = TextTest::contains(part);
    return condition;
}

IndexCondition group(IndexCondition::Kind kind, std::vector<IndexCondition> children)
{
    IndexCondition condition;
    condition.kind = kind;
    condition.children = std::move(children);
    return condition;
}

} // namespace

void TestIndexTable::oneOfSomeIsOneOfMore()
{
    using Kind = IndexCondition::Kind;
    const IndexCondition some = group(Kind::Any, {isNumber(1), hasPart("a")});
    const IndexCondition more = group(Kind::Any, {hasPart("a"), isNumber(2), isNumber(1)});
    QVERIFY(some.implies(more));
    QVERIFY(some.implies(some));
    QVERIFY(!more.implies(some));
    QVERIFY(isNumber(2).implies(more));
    QVERIFY(!isNumber(3).implies(more));
    QVERIFY(!hasPart("b").implies(more));
    QVERIFY(!more.implies(isNumber(2)));
    QVERIFY(!group(Kind::All, {isNumber(1), hasPart("b")}).implies(some)); // not easily seen
    IndexCondition otherColumn = isNumber(1);
    otherColumn.column = 1;
    QVERIFY(!otherColumn.implies(more));
}

/// What sorts out the most is asked first, and differs from segment to segment.
void TestIndexTable::theOrderOfConditionsChangesNothing()
{
    constexpr int rows = 400;
    IndexTable table(1, 1, 40);
    for (int i = 0; i < rows; ++i)
        table.append(rowOf(i, i, i < rows / 2 ? i % 5 : 1, i % 3 == 0 ? "needle" : "hay"));
    table.flush();
    using Kind = IndexCondition::Kind;
    const IndexCondition both = group(Kind::All, {hasPart("NEED"), isNumber(1)});
    TableSearch search(table);
    search.run(both, {TableSearch::Order::Time, false, 0, rows});
    std::vector<Number> expected;
    for (int i = 0; i < rows; ++i) {
        if (i % 3 == 0 && (i >= rows / 2 || i % 5 == 1))
            expected.push_back(i);
    }
    QVERIFY(search.ids() == expected);
}

KODMS_TEST_MAIN(TestIndexTable, QCoreApplication)
#include "TestIndexTable.moc"
