// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/PortableScan.h"
#include "services/search/Sse2Scan.h"
#include "tests/support/TestMain.h"

#include <QRandomGenerator>
#include <QTest>

#include <cstring>
#include <vector>

using namespace KODMS::Services;

/// The scans of this processor find what the portable ones find.
class TestScans : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void portableScansFindWhatStandsThere();
    void bothFindTheSameNumbers();
    void bothFindTheSameBytes();
};

void TestScans::portableScansFindWhatStandsThere()
{
    std::vector<std::uint8_t> numbers(64 * sizeof(std::uint32_t) + 1);
    const std::uint32_t large = 300000;
    for (const std::size_t place : {0, 63})
        std::memcpy(numbers.data() + 1 + place * sizeof(large), &large, sizeof(large));
    QCOMPARE(PortableScan::equal(numbers.data() + 1, large), (std::uint64_t{1} << 63) | 1U);
    std::vector<std::uint8_t> bytes(128, 'x');
    bytes[5] = 'A';
    bytes[7] = 'c';
    bytes[40] = 'a';
    bytes[42] = 'C';
    const PortableScan::Probe end{'c', 0x20, 2};
    QCOMPARE(PortableScan::hits(bytes.data(), {'a', 0x20, 0}, end),
             (std::uint64_t{1} << 5) | (std::uint64_t{1} << 40));
    QCOMPARE(PortableScan::hits(bytes.data(), {'a', 0, 0}, end), std::uint64_t{1} << 40);
    QCOMPARE(PortableScan::hits(bytes.data(), {'a', 0, 1}), std::uint64_t{1} << 39);
}

#if defined(__SSE2__)

namespace {

/// Numbers of which many are equal, at an odd address.
template <typename Value> void compareNumbers(QRandomGenerator &random)
{
    for (int round = 0; round < 300; ++round) {
        std::vector<std::uint8_t> memory(64 * sizeof(Value) + 16);
        std::uint8_t *values = memory.data() + round % 16;
        const auto wanted = static_cast<Value>(random.generate());
        for (std::size_t i = 0; i < 64; ++i) {
            const auto other = static_cast<Value>(random.generate());
            const auto near = static_cast<Value>(wanted ^ (Value{1} << random.bounded(8)));
            const Value value = random.bounded(3) == 0   ? wanted
                                : random.bounded(2) == 0 ? near
                                                         : other;
            std::memcpy(values + i * sizeof(Value), &value, sizeof(Value));
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

void TestScans::bothFindTheSameBytes()
{
    QRandomGenerator random(6);
    const std::uint8_t letters[] = {'a', 'A', 'b', 'B', 'z', 'Z', '@', '[', '`', '{', 0, 0xe6};
    constexpr int kinds = sizeof(letters);
    int found = 0;
    for (int round = 0; round < 2000; ++round) {
        std::vector<std::uint8_t> bytes(64 + 40 + 16);
        for (std::uint8_t &byte : bytes)
            byte = letters[random.bounded(kinds)];
        const auto probe = [&] {
            const std::uint8_t letter = letters[random.bounded(kinds)];
            const bool folds = letter >= 'a' && letter <= 'z';
            return ByteProbe{letter, static_cast<std::uint8_t>(folds ? 0x20 : 0),
                             static_cast<std::size_t>(random.bounded(40))};
        };
        const ByteProbe first = probe();
        const ByteProbe second = probe();
        const std::uint8_t *start = bytes.data() + random.bounded(16);
        const std::uint64_t expected = PortableScan::hits(start, first, second);
        QCOMPARE(Sse2Scan::hits(start, first, second), expected);
        QCOMPARE(Sse2Scan::hits(start, first), PortableScan::hits(start, first));
        QCOMPARE(Sse2Scan::hits16(start, first), PortableScan::hits16(start, first));
        QCOMPARE(PortableScan::hits16(start, first), PortableScan::hits(start, first) & 0xffffU);
        found += expected != 0 ? 1 : 0;
    }
    QVERIFY(found > 300);
}

#else

void TestScans::bothFindTheSameNumbers()
{
    QSKIP("this processor has no SSE2");
}

void TestScans::bothFindTheSameBytes()
{
    QSKIP("this processor has no SSE2");
}

#endif

KODMS_TEST_MAIN(TestScans, QCoreApplication)
#include "TestScans.moc"
