// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/FeatureReader.h"
#include "services/odbpp/JobFile.h"
#include "services/odbpp/MatrixReader.h"
#include "services/odbpp/OdbJobReader.h"
#include "tests/archive/SampleArchives.h"
#include "tests/odbpp/support/JobFiles.h"
#include "tests/odbpp/support/Mutator.h"
#include "tests/support/ProcessorTime.h"
#include "tests/support/TestMain.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// Damaged jobs: no crash, no hang, and an answer that does not depend on the pieces
/// in which the bytes come. KODMS_FUZZ_SECONDS says how much processor time it gets in
/// all, KODMS_FUZZ_SEED where the dice start.
class FuzzTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void features();
    void matrices();
    void packedFeatures();
    void archives();

private:
    struct Answer {
        bool ok = false;
        QString text;
        qint64 count = 0;

        bool operator==(const Answer &other) const
        {
            return ok == other.ok && text == other.text && count == other.count;
        }

        /// How much of a damaged packing is unpacked before the damage shows, depends on
        /// the pieces.
        bool agreesWith(const Answer &other) const
        {
            return ok == other.ok && count == other.count;
        }
    };

    template <typename Reader> static Answer read(const QByteArray &bytes, int piece);
    template <typename Reader>
    void fuzz(const QVector<QByteArray> &seeds, double share, bool isPacked = false);
    bool hasTime(double share) const;
    void begin();
    void tell(qint64 rounds, qint64 accepted) const;

    /// Of processor time: what others do on the machine meanwhile is no fault of the reader.
    static constexpr double MostSeconds = 2;

    double m_seconds = 60;
    quint32 m_seed = 1;
    double m_begin = 0;
    QElapsedTimer m_wall;
    QVector<QByteArray> m_texts;
};

namespace {

double secondsSince(double begin)
{
    return processorTime() - begin;
}

qint64 countOf(const FeatureReader &reader)
{
    return reader.count();
}

qint64 countOf(const MatrixReader &reader)
{
    return reader.layers().size();
}

} // namespace

void FuzzTest::initTestCase()
{
    bool isNumber = false;
    const double seconds = qEnvironmentVariable("KODMS_FUZZ_SECONDS").toDouble(&isNumber);
    if (isNumber)
        m_seconds = seconds;
#ifdef KODMS_FUZZ_LONG
    else
        m_seconds = 3600;
#endif
    m_seed = static_cast<quint32>(qEnvironmentVariableIntValue("KODMS_FUZZ_SEED"));
    SampleJobPlan plan;
    plan.layers = SampleJob::boardLayers(4);
    for (const int count : {1, 12, 200}) {
        plan.featuresPerLayer = count;
        m_texts << SampleJob(plan).features(0, count);
    }
    m_texts << QByteArray(m_texts[1]).replace("\n", "\r\n");
}

void FuzzTest::begin()
{
    m_begin = processorTime();
    m_wall.start();
}

bool FuzzTest::hasTime(double share) const
{
    constexpr double patience = 3; // where another process works for this one, as under wine
    const double waited = static_cast<double>(m_wall.elapsed()) / 1000;
    return secondsSince(m_begin) < m_seconds * share && waited < patience * m_seconds * share;
}

void FuzzTest::tell(qint64 rounds, qint64 accepted) const
{
    qInfo("%lld mutations, %lld of them still readable", static_cast<long long>(rounds),
          static_cast<long long>(accepted));
}

template <typename Reader> FuzzTest::Answer FuzzTest::read(const QByteArray &bytes, int piece)
{
    Reader reader;
    JobFile file(QStringLiteral("f"), LimitSettings(), reader);
    Outcome outcome;
    for (int at = 0; outcome && at < bytes.size(); at += piece)
        outcome = file.add(bytes.constData() + at, qMin(piece, bytes.size() - at));
    if (outcome)
        outcome = file.finish();
    return {outcome.ok, outcome.text, outcome.ok ? countOf(reader) : 0};
}

template <typename Reader>
void FuzzTest::fuzz(const QVector<QByteArray> &seeds, double share, bool isPacked)
{
    Mutator mutator(seeds, m_seed);
    qint64 rounds = 0;
    qint64 accepted = 0;
    for (begin(); hasTime(share); ++rounds) {
        const QByteArray bytes = mutator.next();
        const double start = processorTime();
        const Answer whole = read<Reader>(bytes, qMax(1, bytes.size()));
        const Answer pieces = read<Reader>(bytes, 1 + mutator.below(40));
        QVERIFY2(secondsSince(start) < MostSeconds, qPrintable(QString::number(rounds)));
        const bool isSame = isPacked ? whole.agreesWith(pieces) : whole == pieces;
        QVERIFY2(isSame, qPrintable(whole.text + QLatin1Char('|') + pieces.text));
        QVERIFY(whole.ok != !whole.text.isEmpty());
        accepted += whole.ok ? 1 : 0;
    }
    tell(rounds, accepted);
    QVERIFY(accepted > 0 && accepted < rounds);
}

void FuzzTest::features()
{
    fuzz<FeatureReader>(m_texts, 0.3);
}

void FuzzTest::matrices()
{
    QVector<QByteArray> seeds;
    SampleJobPlan plan;
    for (const int copper : {1, 4, 20}) {
        plan.layers = SampleJob::boardLayers(copper);
        seeds << SampleJob(plan).matrix();
        plan.steps << QStringLiteral("拼板%1").arg(copper);
    }
    fuzz<MatrixReader>(seeds, 0.2);
}

void FuzzTest::packedFeatures()
{
    QVector<QByteArray> seeds;
    for (const QByteArray &text : qAsConst(m_texts))
        seeds << compressed(text) << gzipped(text);
    fuzz<FeatureReader>(seeds, 0.3, true);
}

void FuzzTest::archives()
{
    QVector<QByteArray> seeds;
    for (const QByteArray &text : qAsConst(m_texts)) {
        JobFiles files = smallJob(text);
        files.append({QStringLiteral("job/steps/pcb/layers/l2/features.Z"), compressed(text)});
        seeds << tarOf(files) << tgzOf(files) << zipOf(files);
    }
    Mutator mutator(seeds, m_seed);
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("job"));
    qint64 rounds = 0;
    qint64 accepted = 0;
    for (begin(); hasTime(0.2); ++rounds) {
        QVERIFY(writeFile(path, mutator.next()));
        const double start = processorTime();
        NoProgress progress;
        const auto job = readOdbJob(path, LimitSettings(), progress);
        QVERIFY2(secondsSince(start) < MostSeconds, qPrintable(QString::number(rounds)));
        QVERIFY(job.outcome.ok != !job.text().isEmpty());
        accepted += job.outcome.ok ? 1 : 0;
    }
    tell(rounds, accepted);
}

KODMS_TEST_MAIN(FuzzTest, QCoreApplication)
#include "FuzzTest.moc"
