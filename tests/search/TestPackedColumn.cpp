// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/PackedColumn.h"
#include "tests/support/TestMain.h"

#include <QRandomGenerator>
#include <QTest>

using namespace KODMS::Services;
using Number = PackedColumn::Number;
using Numbers = std::vector<Number>;

Q_DECLARE_METATYPE(Numbers)

/// Numbers come back as they went in, and are found where they stand.
class TestPackedColumn : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void numbersComeBack_data() { columns(); }

    void numbersComeBack();

    void numbersAreFound_data() { columns(); }

    void numbersAreFound();

    void membersAreFound_data() { columns(); }

    void membersAreFound();
    void smallSpansTakeFewBytes();

private:
    static void columns();
};

namespace {

/// Every row for which `test` holds.
template <typename Test> RowBits expected(const Numbers &numbers, const RowBits &among, Test test)
{
    RowBits rows;
    for (int row = 0; row < static_cast<int>(numbers.size()); ++row) {
        if (among.has(row) && test(numbers[static_cast<std::size_t>(row)]))
            rows.add(row);
    }
    return rows;
}

bool isSame(const RowBits &a, const RowBits &b)
{
    for (int place = 0; place < RowBits::wordCount; ++place) {
        if (a.word(place) != b.word(place))
            return false;
    }
    return true;
}

RowBits everySecond(int rows)
{
    RowBits bits;
    for (int row = 0; row < rows; row += 2)
        bits.add(row);
    return bits;
}

Numbers random(int count, Number smallest, Number span, bool hasNone)
{
    QRandomGenerator64 generator(static_cast<quint32>(count));
    Numbers numbers;
    for (int i = 0; i < count; ++i) {
        const auto offset =
            static_cast<Number>(generator.generate() % static_cast<std::uint64_t>(span));
        numbers.push_back(hasNone && i % 7 == 0 ? PackedColumn::none : smallest + offset);
    }
    return numbers;
}

} // namespace

void TestPackedColumn::columns()
{
    QTest::addColumn<Numbers>("numbers");
    QTest::newRow("no row") << Numbers{};
    QTest::newRow("one row") << Numbers{42};
    QTest::newRow("none in any row") << Numbers(100, PackedColumn::none);
    QTest::newRow("the same in all rows") << Numbers(4096, 12);
    QTest::newRow("one number or none") << Numbers{5, PackedColumn::none, 5, 5};
    QTest::newRow("a byte") << random(1000, 0, 200, true);
    QTest::newRow("a byte, filled") << random(4096, -100, 255, true);
    QTest::newRow("two bytes") << random(4095, 1000000, 60000, false);
    QTest::newRow("four bytes") << random(129, -5, 4000000000LL, true);
    QTest::newRow("eight bytes") << random(64, -7, 4000000000000LL, true);
    QTest::newRow("the largest span")
        << Numbers{std::numeric_limits<Number>::max(), std::numeric_limits<Number>::min() + 1, 0,
                   PackedColumn::none};
}

void TestPackedColumn::numbersComeBack()
{
    QFETCH(Numbers, numbers);
    const PackedColumn column(numbers);
    QCOMPARE(column.size(), static_cast<int>(numbers.size()));
    Number smallest = PackedColumn::none;
    Number largest = PackedColumn::none;
    for (int row = 0; row < column.size(); ++row) {
        const Number number = numbers[static_cast<std::size_t>(row)];
        QCOMPARE(column.at(row), number);
        if (number == PackedColumn::none)
            continue;
        smallest = smallest == PackedColumn::none ? number : std::min(smallest, number);
        largest = std::max(largest, number);
    }
    QCOMPARE(column.smallest(), smallest);
    QCOMPARE(column.largest(), largest);
}

void TestPackedColumn::numbersAreFound()
{
    QFETCH(Numbers, numbers);
    const PackedColumn column(numbers);
    Numbers wanted{0, 1, -1, 12, 42, PackedColumn::none, std::numeric_limits<Number>::max()};
    for (std::size_t i = 0; i < numbers.size(); i += 37) {
        wanted.push_back(numbers[i]);
        wanted.push_back(numbers[i] ^ 1);
    }
    for (const RowBits &among : {RowBits::first(column.size()), everySecond(column.size())}) {
        for (const Number number : wanted) {
            RowBits rows = among;
            column.keepEqual(number, rows);
            QVERIFY(isSame(rows, expected(numbers, among, [number](Number stored) {
                               return stored != PackedColumn::none && stored == number;
                           })));
        }
    }
}

void TestPackedColumn::membersAreFound()
{
    QFETCH(Numbers, numbers);
    const PackedColumn column(numbers);
    std::vector<std::uint8_t> members(150);
    for (std::size_t i = 0; i < members.size(); i += 3)
        members[i] = 1;
    const auto isMember = [&members](Number number) {
        return number >= 0 && number < 150 && members[static_cast<std::size_t>(number)] != 0;
    };
    RowBits few;
    for (int row = 3; row < column.size(); row += 50)
        few.add(row);
    for (const RowBits &among : {RowBits::first(column.size()), few}) {
        RowBits rows = among;
        column.keepMembers(members, rows);
        QVERIFY(isSame(rows, expected(numbers, among, isMember)));
    }
}

void TestPackedColumn::smallSpansTakeFewBytes()
{
    QCOMPARE(PackedColumn(Numbers(4096, 1234567890123LL)).bytes(), std::size_t{0});
    QCOMPARE(PackedColumn(random(4096, 1234567890123LL, 250, true)).bytes(), std::size_t{4096});
    QCOMPARE(PackedColumn(random(4096, 0, 1000, true)).bytes(), std::size_t{8192});
}

KODMS_TEST_MAIN(TestPackedColumn, QCoreApplication)
#include "TestPackedColumn.moc"
