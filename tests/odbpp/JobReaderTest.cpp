// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/OdbJobReader.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/SampleArchives.h"
#include "tests/odbpp/support/JobFiles.h"
#include "tests/support/TestMain.h"

#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// Reading whole jobs, in every form in which they come.
class JobReaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_dir.reset(); }

    void countsWhatTheGeneratorWrote_data();
    void countsWhatTheGeneratorWrote();
    void tellsTheMatrix();
    void countsOnlyBoardCopperAsLayers();
    void findsTheJobInsideOtherFolders();
    void namesAJobWithoutFolderByItsArchive();
    void aNameReadsForwards();
    void keepsToTheOuterJob();
    void countsWhatTheMatrixNames();
    void takesEmptyAndMissingFeatures();
    void takesTheOldEncodingOfChineseNames();
    void readsFilesInAnyOrder();
    void readsLinkedFeatures();
    void theSameJobGivesTheSameAnswer();
    void reportsProgressAndStops();

private:
    QString path(const QString &name) const { return m_dir->filePath(name); }

    Result<OdbJob> read(const QString &file)
    {
        NoProgress progress;
        return readOdbJob(file, LimitSettings(), progress);
    }

    Result<OdbJob> readTar(const JobFiles &files, const QString &name = QStringLiteral("x.tar"))
    {
        if (!writeFile(path(name), tarOf(files)))
            qFatal("cannot write");
        return read(path(name));
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

namespace {

void packFeatures(JobFiles &files, QByteArray (*pack)(const QByteArray &), const QString &suffix)
{
    for (auto &file : files)
        if (file.path.endsWith(QLatin1String("/features"))) {
            file.path += suffix;
            file.content = pack(file.content);
        }
}

struct Form {
    const char *title;
    void (*plan)(SampleJobPlan &);
    void (*files)(JobFiles &);
};

const QVector<Form> forms{
    {"plain", [](SampleJobPlan &) {}, [](JobFiles &) {}},
    {"one feature a layer", [](SampleJobPlan &plan) { plan.featuresPerLayer = 1; },
     [](JobFiles &) {}},
    {"no features", [](SampleJobPlan &plan) { plan.featuresPerLayer = 0; }, [](JobFiles &) {}},
    {"compressed", [](SampleJobPlan &) {},
     [](JobFiles &files) { packFeatures(files, compressed, QStringLiteral(".Z")); }},
    {"compressed, small suffix", [](SampleJobPlan &) {},
     [](JobFiles &files) { packFeatures(files, compressed, QStringLiteral(".z")); }},
    {"gzip", [](SampleJobPlan &) {},
     [](JobFiles &files) { packFeatures(files, gzipped, QStringLiteral(".gz")); }},
    {"compressed without saying so", [](SampleJobPlan &) {},
     [](JobFiles &files) { packFeatures(files, compressed, QString()); }},
    {"lines of Windows", [](SampleJobPlan &plan) { plan.lineEnd = "\r\n"; }, [](JobFiles &) {}},
    {"no line end at the end", [](SampleJobPlan &) {},
     [](JobFiles &files) {
         for (auto &file : files)
             file.content.chop(1);
     }},
    {"folders in capitals", [](SampleJobPlan &) {},
     [](JobFiles &files) {
         for (auto &file : files)
             file.path = file.path.toUpper();
     }},
    {"names in capitals in the matrix",
     [](SampleJobPlan &plan) { plan.steps = QStringList{QStringLiteral("pcb")}; },
     [](JobFiles &files) { files[0].content.replace("NAME=l", "NAME=L"); }},
    {"Chinese names",
     [](SampleJobPlan &plan) {
         plan.name = QStringLiteral("电源板");
         plan.steps = QStringList{QStringLiteral("拼板"), QStringLiteral("单元")};
         plan.layers[4].name = QStringLiteral("顶层");
     },
     [](JobFiles &) {}},
    {"a layer that Windows cannot name",
     [](SampleJobPlan &plan) { plan.layers[4].name = QStringLiteral("aux"); }, [](JobFiles &) {}},
    {"four steps",
     [](SampleJobPlan &plan) {
         plan.steps = QStringList{QStringLiteral("orig"), QStringLiteral("pcb"),
                                  QStringLiteral("array"), QStringLiteral("panel")};
     },
     [](JobFiles &) {}},
    {"thirty copper layers", [](SampleJobPlan &plan) { plan.layers = SampleJob::boardLayers(30); },
     [](JobFiles &) {}},
};

} // namespace

void JobReaderTest::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
}

void JobReaderTest::countsWhatTheGeneratorWrote_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<QString>("container");
    for (int i = 0; i < forms.size(); ++i)
        for (const char *container : {"folder", "tgz", "zip", "tar"})
            QTest::newRow(qPrintable(QStringLiteral("%1, %2").arg(QLatin1String(forms[i].title),
                                                                  QLatin1String(container))))
                << i << QString::fromLatin1(container);
}

void JobReaderTest::countsWhatTheGeneratorWrote()
{
    QFETCH(int, form);
    QFETCH(QString, container);
    SampleJobPlan plan;
    plan.layers = SampleJob::boardLayers(6);
    forms[form].plan(plan);
    const SampleJob sample(plan);
    JobFiles files = sample.files();
    forms[form].files(files);
    const QString root = files[0].path.section(QLatin1Char('/'), 0, 0);
    QString target = path(QStringLiteral("job.") + container);
    if (container == QLatin1String("folder")) {
#if defined(Q_OS_WIN)
        if (QByteArray(forms[form].title).contains("Windows cannot name"))
            QSKIP("it cannot");
#endif
        writeJob(m_dir->path(), files);
        target = path(root);
    } else {
        const QByteArray bytes = container == QLatin1String("zip")   ? zipOf(files)
                                 : container == QLatin1String("tgz") ? tgzOf(files)
                                                                     : tarOf(files);
        QVERIFY(writeFile(target, bytes));
    }
    const auto job = read(target);
    QVERIFY2(job.outcome.ok, qPrintable(job.text()));
    QCOMPARE(job.value.name, root);
    QCOMPARE(job.value.steps, plan.steps);
    QCOMPARE(job.value.layers.size(), plan.layers.size());
    QCOMPARE(job.value.featureCount, sample.featureCount());
    const int copper = static_cast<int>(std::count_if(
        plan.layers.cbegin(), plan.layers.cend(), [](const OdbLayer &l) { return l.isCopper(); }));
    QCOMPARE(job.value.layerCount(), copper);
    QCOMPARE(job.value.files, qint64{files.size()});
    qint64 bytes = 0;
    for (const auto &file : qAsConst(files))
        bytes += file.content.size();
    QCOMPARE(job.value.bytes, bytes);
}

void JobReaderTest::tellsTheMatrix()
{
    const auto job =
        readTar(jobWithMatrix("# a comment\nUNITS=MM\n\nSTEP {\n  COL=2\n  NAME=pcb\n}\n"
                              "LAYER {\n ROW = 2 \n TYPE=drill\n NAME=d\n}\n"
                              "EXTRA {\n ANYTHING=at all\n NAME=\n}\n"
                              "layer{\n ROW=1\n CONTEXT=misc\n TYPE=Signal\n"
                              " NAME=s\n POLARITY=negative\n COLOR=707070\n}\n"));
    QVERIFY2(job.outcome.ok, qPrintable(job.text()));
    QCOMPARE(job.value.layers.size(), 2);
    const OdbLayer &first = job.value.layers[0];
    QCOMPARE(first.row, 1);
    QCOMPARE(first.name, QStringLiteral("s"));
    QCOMPARE(first.context, QStringLiteral("MISC"));
    QCOMPARE(first.type, QStringLiteral("SIGNAL"));
    QCOMPARE(first.polarity, QStringLiteral("NEGATIVE"));
    const OdbLayer &second = job.value.layers[1];
    QCOMPARE(second.context, QStringLiteral("BOARD"));
    QCOMPARE(second.type, QStringLiteral("DRILL"));
    QCOMPARE(second.polarity, QStringLiteral("POSITIVE"));
}

void JobReaderTest::countsOnlyBoardCopperAsLayers()
{
    QByteArray matrix = "STEP {\nNAME=pcb\n}\n";
    int row = 0;
    for (const char *context : {"BOARD", "MISC"})
        for (const char *type : {"SIGNAL", "POWER_GROUND", "MIXED", "DIELECTRIC", "SOLDER_MASK",
                                 "SOLDER_PASTE", "SILK_SCREEN", "DRILL", "ROUT", "DOCUMENT",
                                 "COMPONENT", "MASK", "CONDUCTIVE_PASTE", "SOMETHING_NEW"}) {
            const QByteArray number = QByteArray::number(++row);
            matrix += QByteArray("LAYER {\nROW=") + number + "\nCONTEXT=" + context +
                      "\nTYPE=" + type + "\nNAME=n" + number + "\n}\n";
        }
    const auto job = readTar(jobWithMatrix(matrix));
    QVERIFY2(job.outcome.ok, qPrintable(job.text()));
    QCOMPARE(job.value.layers.size(), 28);
    QCOMPARE(job.value.layerCount(), 3);
}

void JobReaderTest::findsTheJobInsideOtherFolders()
{
    const qint64 features = 50 * 11;
    for (const QString &outer : {QStringLiteral("from customer"), QStringLiteral("a/b/steps/c"),
                                 QStringLiteral("matrix")}) {
        JobFiles files = boardFiles();
        for (auto &file : files)
            file.path = outer + QLatin1Char('/') + file.path;
        files.append({outer + QStringLiteral("/readme.txt"), "read me"});
        const auto job = readTar(files);
        QVERIFY2(job.outcome.ok, qPrintable(job.text()));
        QCOMPARE(job.value.name, QStringLiteral("board"));
        QCOMPARE(job.value.featureCount, features);
    }
}

void JobReaderTest::aNameReadsForwards()
{
    JobFiles files = smallJob("");
    const QString name = QStringLiteral("bo") + QChar(0x202e) + QStringLiteral("ard");
    for (auto &file : files)
        file.path.replace(0, QStringLiteral("job").size(), name);
    const auto job = readTar(files);
    QVERIFY2(job, qPrintable(job.text()));
    QCOMPARE(job.value.name, QStringLiteral("bo?ard"));
}

void JobReaderTest::namesAJobWithoutFolderByItsArchive()
{
    JobFiles files = boardFiles();
    for (auto &file : files)
        file.path = file.path.section(QLatin1Char('/'), 1);
    const auto job = readTar(files, QStringLiteral("主板.v2.tar"));
    QVERIFY2(job.outcome.ok, qPrintable(job.text()));
    QCOMPARE(job.value.name, QStringLiteral("主板.v2"));
    QVERIFY(writeFile(path(QStringLiteral("n.tar.gz")), tgzOf(files)));
    const auto packed = read(path(QStringLiteral("n.tar.gz")));
    QVERIFY2(packed.outcome.ok, qPrintable(packed.text()));
    QCOMPARE(packed.value.name, QStringLiteral("n"));
}

/// What a job was made from may lie inside it, a broken one too.
void JobReaderTest::keepsToTheOuterJob()
{
    JobFiles files;
    for (auto file : boardFiles(QStringLiteral("inner"))) {
        file.path = QStringLiteral("board/input/") + file.path;
        file.content = "broken";
        files.append(file);
    }
    files += boardFiles();
    const auto job = readTar(files);
    QVERIFY2(job.outcome.ok, qPrintable(job.text()));
    QCOMPARE(job.value.name, QStringLiteral("board"));
    QCOMPARE(job.value.featureCount, qint64{550});
}

void JobReaderTest::countsWhatTheMatrixNames()
{
    JobFiles files = smallJob("P 1 1 0 P 0 0\nP 1 1 0 P 0 0\n");
    files.append({QStringLiteral("job/steps/pcb/layers/deleted/features"), "P 1 1 0 P 0 0\n"});
    files.append({QStringLiteral("job/steps/gone/layers/l1/features"), "P 1 1 0 P 0 0\n"});
    files.append({QStringLiteral("job/steps/pcb/layers/l1/sub/features"), "P 1 1 0 P 0 0\n"});
    const auto job = readTar(files);
    QVERIFY2(job.outcome.ok, qPrintable(job.text()));
    QCOMPARE(job.value.featureCount, qint64{2});
}

void JobReaderTest::takesEmptyAndMissingFeatures()
{
    const auto empty = readTar(smallJob(""));
    QVERIFY2(empty.outcome.ok, qPrintable(empty.text()));
    QCOMPARE(empty.value.featureCount, qint64{0});
    JobFiles files = smallJob("");
    files.removeLast();
    const auto missing = readTar(files);
    QVERIFY2(missing.outcome.ok, qPrintable(missing.text()));
    QCOMPARE(missing.value.featureCount, qint64{0});
    QCOMPARE(missing.value.layerCount(), 1);
}

void JobReaderTest::takesTheOldEncodingOfChineseNames()
{
    const QByteArray top("\xb6\xa5\xb2\xe3"); // 顶层 in GB18030
    JobFiles files =
        jobWithMatrix("STEP {\nNAME=pcb\n}\nLAYER {\nROW=1\nTYPE=SIGNAL\nNAME=" + top + "\n}\n");
    files.append({QStringLiteral("job/steps/pcb/layers/顶层/features"), "P 1 1 0 P 0 0\n"});
    const auto job = readTar(files);
    QVERIFY2(job.outcome.ok, qPrintable(job.text()));
    QCOMPARE(job.value.layers[0].name, QStringLiteral("顶层"));
    QCOMPARE(job.value.featureCount, qint64{1});
}

void JobReaderTest::readsFilesInAnyOrder()
{
    JobFiles files = boardFiles();
    std::reverse(files.begin(), files.end());
    const auto job = readTar(files);
    QVERIFY2(job.outcome.ok, qPrintable(job.text()));
    QCOMPARE(job.value.featureCount, qint64{550});
}

/// Archivers store a file that stands twice on the disk once.
void JobReaderTest::readsLinkedFeatures()
{
    QVector<RawTarEntry> entries;
    for (const auto &file : smallJob("P 1 1 0 P 0 0\n"))
        entries.append({file.path.toUtf8(), file.content});
    entries[0].content += "LAYER {\nROW=2\nTYPE=SIGNAL\nNAME=l2\n}\n";
    entries.append(
        {"job/steps/pcb/layers/l2/features", {}, '1', "job/steps/pcb/layers/l1/features"});
    QVERIFY(writeFile(path(QStringLiteral("x.tar")), rawTar(entries)));
    const auto job = read(path(QStringLiteral("x.tar")));
    QVERIFY2(job.outcome.ok, qPrintable(job.text()));
    QCOMPARE(job.value.featureCount, qint64{2});
}

void JobReaderTest::theSameJobGivesTheSameAnswer()
{
    SampleJobPlan plan;
    plan.layers = SampleJob::boardLayers(4);
    QCOMPARE(tarOf(SampleJob(plan).files()), tarOf(SampleJob(plan).files()));
    plan.seed = 2;
    const QByteArray other = SampleJob(plan).features(0, 1);
    plan.seed = 1;
    QVERIFY(SampleJob(plan).features(0, 1) != other);
}

namespace {

/// Cancels once some bytes were done.
class Impatience final : public Progress {
public:
    explicit Impatience(qint64 patience) : m_patience(patience) {}

    void setTotal(qint64 bytes) override { total = bytes; }

    void advance(qint64 bytes) override { done += bytes; }

    bool isCancelled() const override { return done > m_patience; }

    qint64 total = 0;
    qint64 done = 0;

private:
    qint64 m_patience;
};

} // namespace

void JobReaderTest::reportsProgressAndStops()
{
    SampleJobPlan plan;
    plan.layers = SampleJob::boardLayers(4);
    plan.featuresPerLayer = 20000;
    const JobFiles files = SampleJob(plan).files();
    writeJob(m_dir->path(), files);
    QVERIFY(writeFile(path(QStringLiteral("x.zip")), zipOf(files)));
    for (const QString &target : {path(plan.name), path(QStringLiteral("x.zip"))}) {
        Impatience patient(std::numeric_limits<qint64>::max());
        QVERIFY(readOdbJob(target, LimitSettings(), patient));
        QVERIFY(patient.total > 0);
        QVERIFY(patient.done > patient.total * 9 / 10);
        QVERIFY(patient.done <= patient.total);
        Impatience impatient(patient.total / 3);
        QVERIFY(!readOdbJob(target, LimitSettings(), impatient));
        QVERIFY(impatient.done < patient.total / 2);
    }
}

KODMS_TEST_MAIN(JobReaderTest, QCoreApplication)
#include "JobReaderTest.moc"
