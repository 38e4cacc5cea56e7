// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/PortableScan.h"
#include "services/search/Sse2Scan.h"
#include "tests/support/TestMain.h"

#include <QRandomGenerator>
#include <QTest>

#include <vector>

using namespace KODMS::Services;

/// The scans of this processor find what the portable ones find.
class TestScans : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void portableScansFindWhatStandsThere();
    void bothFindTheSameNumbers();
    void bothFindTheSamePairs();
};

void TestScans::portableScansFindWhatStandsThere()
{
    std::vector<std::uint16_t> numbers(64, 7);
    numbers[0] = numbers[63] = 300;
    QCOMPARE(PortableScan::equal(numbers.data(), std::uint16_t{300}),
             (std::uint64_t{1} << 63) | 1U);
    std::vector<std::uint8_t> bytes(128, 'x');
    bytes[5] = 'A';
    bytes[7] = 'c';
    bytes[40] = 'a';
    bytes[42] = 'C';
    const BytePair either{'a', 0x20, 'c', 0x20, 2};
    QCOMPARE(PortableScan::pairs(bytes.data(), either),
             (std::uint64_t{1} << 5) | (std::uint64_t{1} << 40));
    const BytePair exact{'a', 0, 'c', 0x20, 2};
    QCOMPARE(PortableScan::pairs(bytes.data(), exact), std::uint64_t{1} << 40);
}

#if defined(__SSE2__)

namespace {

/// Numbers of which many are equal, at an odd address.
template <typename Value> void compareNumbers(QRandomGenerator &random)
{
    for (int round = 0; round < 300; ++round) {
        std::vector<std::uint8_t> memory(64 * sizeof(Value) + 16);
        auto *values = reinterpret_cast<Value *>(memory.data() + round % 4 * sizeof(Value));
        const auto wanted = static_cast<Value>(random.generate());
        for (int i = 0; i < 64; ++i) {
            const auto other = static_cast<Value>(random.generate());
            const auto near = static_cast<Value>(wanted ^ (Value{1} << random.bounded(8)));
            values[i] = random.bounded(3) == 0 ? wanted : random.bounded(2) == 0 ? near : other;
        }
        QCOMPARE(Sse2Scan::equal(values, wanted), PortableScan::equal(values, wanted));
    }
}

} // namespace

void TestScans::bothFindTheSameNumbers()
{
    QRandomGenerator random(5);
    compareNumbers<std::uint8_t>(random);
    compareNumbers<std::uint16_t>(random);
    compareNumbers<std::uint32_t>(random);
}

void TestScans::bothFindTheSamePairs()
{
    QRandomGenerator random(6);
    const std::uint8_t letters[] = {'a', 'A', 'b', 'B', 'z', 'Z', '@', '[', '`', '{', 0, 0xe6};
    constexpr int kinds = sizeof(letters);
    int found = 0;
    for (int round = 0; round < 2000; ++round) {
        const auto distance = static_cast<std::size_t>(random.bounded(40));
        std::vector<std::uint8_t> bytes(64 + 40 + 16);
        for (std::uint8_t &byte : bytes)
            byte = letters[random.bounded(kinds)];
        BytePair pair{letters[random.bounded(kinds)], 0, letters[random.bounded(kinds)], 0,
                      distance};
        pair.firstCase = pair.first >= 'a' && pair.first <= 'z' ? 0x20 : 0;
        pair.lastCase = pair.last >= 'a' && pair.last <= 'z' ? 0x20 : 0;
        const std::uint8_t *start = bytes.data() + random.bounded(16);
        const std::uint64_t expected = PortableScan::pairs(start, pair);
        QCOMPARE(Sse2Scan::pairs(start, pair), expected);
        found += expected != 0 ? 1 : 0;
    }
    QVERIFY(found > 300);
}

#else

void TestScans::bothFindTheSameNumbers()
{
    QSKIP("this processor has no SSE2");
}

void TestScans::bothFindTheSamePairs()
{
    QSKIP("this processor has no SSE2");
}

#endif

KODMS_TEST_MAIN(TestScans, QCoreApplication)
#include "TestScans.moc"
