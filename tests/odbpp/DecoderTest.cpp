// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/GzipDecoder.h"
#include "services/odbpp/LzwDecoder.h"
#include "tests/archive/SampleArchives.h"
#include "tests/odbpp/support/JobFiles.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// Unpacking of .Z and gzip, whatever the pieces that the bytes come in.
class DecoderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void unpacksWhatWasPacked_data();
    void unpacksWhatWasPacked();
    void readsASmallFileOfTheProgramItself();
    void readsSeveralMembersAndPadding();
    void refusesDamage_data();
    void refusesDamage();
    void stopsWhenNothingMoreIsWanted();

private:
    struct Unpacked {
        bool ok = false;
        QByteArray bytes;
    };

    static std::unique_ptr<Decoder> decoderFor(const QByteArray &packed);
    static Unpacked unpack(const QByteArray &packed, int piece);
};

std::unique_ptr<Decoder> DecoderTest::decoderFor(const QByteArray &packed)
{
    if (packed.startsWith("\x1f\x9d"))
        return std::make_unique<LzwDecoder>();
    return std::make_unique<GzipDecoder>();
}

DecoderTest::Unpacked DecoderTest::unpack(const QByteArray &packed, int piece)
{
    const auto decoder = decoderFor(packed);
    Unpacked result;
    const auto take = [&](const char *bytes, std::size_t size) {
        result.bytes.append(bytes, static_cast<int>(size));
        return true;
    };
    result.ok = true;
    for (int at = 0; result.ok && at < packed.size(); at += piece)
        result.ok = decoder->add(packed.constData() + at,
                                 static_cast<std::size_t>(qMin(piece, packed.size() - at)), take);
    result.ok = result.ok && decoder->finish(take);
    return result;
}

void DecoderTest::unpacksWhatWasPacked_data()
{
    QTest::addColumn<QByteArray>("plain");
    QByteArray noise;
    quint32 state = 1;
    for (int i = 0; i < 400000; ++i) {
        state = state * 1664525 + 1013904223;
        noise.append(static_cast<char>(state >> 24));
    }
    QTest::newRow("one byte") << QByteArray("x");
    QTest::newRow("a text") << QByteArray("L 0.1 0.2 0.3 0.4 0 P 0\n").repeated(7);
    QTest::newRow("the same byte") << QByteArray(1000000, 'a');
    QTest::newRow("a job's features, which fill the table")
        << SampleJob(SampleJobPlan{QString(), {}, SampleJob::boardLayers(2), 40000}).features(0, 0);
    QTest::newRow("noise, which clears the table") << noise;
    QTest::newRow("noise after text")
        << SampleJob(SampleJobPlan{QString(), {}, SampleJob::boardLayers(2), 20000})
                   .features(0, 0) +
               noise;
}

void DecoderTest::unpacksWhatWasPacked()
{
    QFETCH(QByteArray, plain);
    for (const QByteArray &packed : {compressed(plain), gzipped(plain)}) {
        for (const int piece : {1, 2, 3, 100, 65536, packed.size()}) {
            const Unpacked unpacked = unpack(packed, piece);
            QVERIFY(unpacked.ok);
            QVERIFY(unpacked.bytes == plain);
        }
    }
}

/// Codes of nine bits, read by hand: 'a', 'b', the string "ab", then one that its
/// predecessor has only begun.
void DecoderTest::readsASmallFileOfTheProgramItself()
{
    // 97, 98, 257 = "ab", 259 = "ab" + its own first byte.
    const QVector<int> codes{97, 98, 257, 259};
    quint64 bits = 0;
    for (int i = 0; i < codes.size(); ++i)
        bits |= static_cast<quint64>(codes[i]) << (9 * i);
    QByteArray packed("\x1f\x9d\x90", 3);
    for (int i = 0; i < 5; ++i)
        packed.append(static_cast<char>(bits >> (8 * i)));
    const Unpacked unpacked = unpack(packed, 1);
    QVERIFY(unpacked.ok);
    QCOMPARE(unpacked.bytes, QByteArray("abababa"));
}

void DecoderTest::readsSeveralMembersAndPadding()
{
    const QByteArray packed = gzipped("one,") + gzipped("two") + QByteArray(512, '\0');
    for (const int piece : {1, 5, 4096}) {
        const Unpacked unpacked = unpack(packed, piece);
        QVERIFY(unpacked.ok);
        QCOMPARE(unpacked.bytes, QByteArray("one,two"));
    }
}

void DecoderTest::refusesDamage_data()
{
    QTest::addColumn<QByteArray>("packed");
    const QByteArray text = QByteArray("L 0.1 0.2 0.3 0.4 0 P 0\n").repeated(100);
    const QByteArray gzip = gzipped(text);
    QByteArray flipped = gzip;
    flipped[gzip.size() - 6] = static_cast<char>(flipped[gzip.size() - 6] ^ 1);
    QTest::newRow("gzip cut in its data") << gzip.left(gzip.size() / 2);
    QTest::newRow("gzip cut in its sum") << gzip.left(gzip.size() - 2);
    QTest::newRow("gzip with a wrong sum") << flipped;
    QTest::newRow("gzip with letters behind it") << gzip + "letters";
    QTest::newRow("gzip magic alone") << QByteArray("\x1f\x8b", 2);
    QTest::newRow(".Z magic alone") << QByteArray("\x1f\x9d", 2);
    QTest::newRow(".Z of 17 bits") << QByteArray("\x1f\x9d\x91", 3);
    QTest::newRow(".Z of 8 bits") << QByteArray("\x1f\x9d\x88", 3);
    QTest::newRow(".Z with unknown flags") << QByteArray("\x1f\x9d\xf0", 3);
    QTest::newRow(".Z that begins with a string") << QByteArray("\x1f\x9d\x90\xff\x03\x00", 6);
    QTest::newRow(".Z with a code that is not known")
        << QByteArray("\x1f\x9d\x90\x61\xfe\x07\x00", 7);
}

void DecoderTest::refusesDamage()
{
    QFETCH(QByteArray, packed);
    for (const int piece : {1, 2, 3, 100000}) {
        const auto decoder = decoderFor(packed);
        const auto take = [](const char *, std::size_t) { return true; };
        bool ok = true;
        for (int at = 0; ok && at < packed.size(); at += piece)
            ok = decoder->add(packed.constData() + at,
                              static_cast<std::size_t>(qMin(piece, packed.size() - at)), take);
        QVERIFY(!(ok && decoder->finish(take)));
        QVERIFY(decoder->damage() != nullptr);
    }
}

void DecoderTest::stopsWhenNothingMoreIsWanted()
{
    const QByteArray plain(5000000, 'a');
    for (const QByteArray &packed : {compressed(plain), gzipped(plain)}) {
        const auto decoder = decoderFor(packed);
        qint64 taken = 0;
        const bool ok = decoder->add(packed.constData(), static_cast<std::size_t>(packed.size()),
                                     [&](const char *, std::size_t size) {
                                         taken += static_cast<qint64>(size);
                                         return false;
                                     });
        QVERIFY(!ok);
        QVERIFY(decoder->damage() == nullptr);
        QVERIFY(taken < plain.size());
    }
}

KODMS_TEST_MAIN(DecoderTest, QCoreApplication)
#include "DecoderTest.moc"
