// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/OdbJobReader.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/SampleArchives.h"
#include "tests/odbpp/support/JobFiles.h"
#include "tests/support/TestMain.h"
#include "tests/support/UnixTricks.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

using namespace KODMS::Services;
using namespace KODMS::Tests;

Q_DECLARE_METATYPE(KODMS::Tests::JobFiles)

/// What cannot be read is refused, with the file and the line.
class JobRefusalsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void features_data();
    void features();
    void goodFeatures_data();
    void goodFeatures();
    void matrix_data();
    void matrix();
    void jobs_data();
    void jobs();
    void archives_data();
    void archives();
    void linksInAFolder();
    void bombs_data();
    void bombs();
    void endlessLayers();
    void moreFeaturesThanCanBeCounted();
    void tooManyJobsInside();
    void aPathThatIsTooLong();
    void limitsOfAFolder();
    void aMessageIsOneLine();

private:
    Result<OdbJob> read(const QByteArray &archive, const LimitSettings &limits = {})
    {
        const QString path = m_dir.filePath(QStringLiteral("x.tar"));
        if (!writeFile(path, archive))
            qFatal("cannot write");
        NoProgress progress;
        return readOdbJob(path, limits, progress);
    }

    QTemporaryDir m_dir;
};

void JobRefusalsTest::features_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("line");
    const auto row = [](const char *title, const QByteArray &text, int line = 1) {
        QTest::newRow(title) << text << line;
    };
    row("an unknown record", "P 1 1 0 P 0 0\n\nX 1 2 3\n", 3);
    row("a record in small letters", "p 1 1 0 P 0 0\n");
    row("a line without its end", "L 1 2 3\n");
    row("a line without symbol", "L 1 2 3 4\n");
    row("a line without polarity", "L 1 2 3 4 0\n");
    row("a polarity of its own", "L 1 2 3 4 0 X 0\n");
    row("a word for a number", "L 1 2 three 4 0 P 0\n");
    row("two points in a number", "L 1 2 3.0.1 4 0 P 0\n");
    row("a comma in a number", "L 1 2 3,0 4 0 P 0\n");
    row("hexadecimal", "L 0x1 2 3 4 0 P 0\n");
    row("not a number", "L nan 2 3 4 0 P 0\n");
    row("infinite", "L inf 2 3 4 0 P 0\n");
    row("a number beyond every factory", "L 1 2 3e30 4 0 P 0\n");
    row("a number that no computer holds", "L 1 2 3e3000 4 0 P 0\n");
    row("a symbol below zero", "L 1 2 3 4 -1 P 0\n");
    row("a symbol of 20 digits", "L 1 2 3 4 99999999999999999999 P 0\n");
    row("a symbol with a point", "P 1 2 1.5 P 0\n");
    row("a resized pad without factor", "P 1 2 -1 0 P 0\n");
    row("a pad of symbol -2", "P 1 2 -2 P 0\n");
    row("an arc without centre", "A 1 2 3 4 0 P 0 Y\n");
    row("attributes instead of fields", "P 1 ;0=1\n");
    row("a text without font", "T 1 2\n");
    row("a barcode without font", "B 1 2 UPC39 P\n");
    row("a surface without polarity", "S\nSE\n");
    row("a contour outside", "OB 1 2 I\n");
    row("a surface end outside", "P 1 1 0 P 0 0\nSE\n", 2);
    row("a point outside a contour", "S P 0\nOS 1 2\nSE\n", 2);
    row("a contour that is neither island nor hole", "S P 0\nOB 1 2 X\nOE\nSE\n", 2);
    row("an arc without direction", "S P 0\nOB 1 2 I\nOC 1 2 3 4\nOE\nSE\n", 3);
    row("a pad in a contour", "S P 0\nOB 1 2 I\nP 1 1 0 P 0 0\nOE\nSE\n", 3);
    row("a surface that does not end", "S P 0\nOB 1 2 I\nOE\n", 3);
    row("a contour that does not end", "S P 0\nOB 1 2 I\nOS 1 1\n", 3);
    row("fewer features than declared", "F 2\nP 1 1 0 P 0 0\n", 2);
    row("more features than declared", "F 0\nP 1 1 0 P 0 0\n", 2);
    row("a declared number that is none", "F many\n");
    row("NUL", QByteArray("P 1 1 0 P 0 0\nP 1\0 1 0 P\n", 25), 2);
    row("NUL in a comment", QByteArray("#\0\n", 3));
    row("a picture", QByteArray("\x89PNG\r\n\x1a\n", 8), 1);
    row("an endless line", "P 1 1 0 P 0 0\n#" + QByteArray(3000000, 'x'), 2);
    row("an endless line that ends", "#" + QByteArray(1048577, 'x') + "\n");
    row("damaged compression", compressed(QByteArray(300, 'a')).left(20) + "\xff\xff\xff\xff", 0);
    row("cut gzip", gzipped("P 1 1 0 P 0 0\n").left(20), 0);
    row("a bad record inside gzip", gzipped("P 1 1 0 P 0 0\nP\n"), 2);
    row("a bad record inside .Z", compressed("P 1 1 0 P 0 0\n#\nP\n"), 3);
}

void JobRefusalsTest::features()
{
    QFETCH(QByteArray, text);
    QFETCH(int, line);
    const auto job = read(tarOf(smallJob(text)));
    QVERIFY(!job);
    QVERIFY2(job.text().contains(QLatin1String("job/steps/pcb/layers/l1/features")),
             qPrintable(job.text()));
    if (line > 0)
        QVERIFY2(job.text().contains(QStringLiteral("第 %1 行").arg(line)), qPrintable(job.text()));
}

void JobRefusalsTest::goodFeatures_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("count");
    const auto row = [](const char *title, const QByteArray &text, int count) {
        QTest::newRow(title) << text << count;
    };
    row("tabs and blanks", "\tP  1\t1   0 P  0\t0 \n   \n", 1);
    row("numbers with sign and exponent", "P +1 -1e-3 0 N 0 0\nP .5 5. +2 P 0\n", 2);
    row("attributes without blank", "P 1 1 0 P;0=1\nL 1 1 2 2 0 P 0;1,2=3;ID=5\n", 2);
    row("a text with semicolon and hash", "T 1 1 standard P 0 1 1 1 'a;b # c' 1\n", 1);
    row("a surface with holes",
        "S P 0;1=2\nOB 1 1 I\nOS 2 2\nOC 3 3 1 1 Y\nOE\n"
        "OB 1 1 H\nOE\nSE\n",
        1);
    row("a surface without contour", "S N 0\nSE\n", 1);
    row("comments inside a surface", "S P 0\n#\nOB 1 1 I\n\n# x\nOE\nSE\n", 1);
    row("settings and units", "UNITS=MM\nU MM\nID=17\nF 1\n$0 r5\n@0 .a\n&0 t\nP 1 1 0 P 0 0\n", 1);
    row("a byte order mark", "\xef\xbb\xbfP 1 1 0 P 0 0\n", 1);
    row("a line of a mebibyte", "#" + QByteArray(1048575, 'x') + "\nP 1 1 0 P 0 0\n", 1);
    row("Chinese attribute texts", "&0 顶层\n&1 \xb6\xa5\nP 1 1 0 P 0 0;0=1\n", 1);
}

void JobRefusalsTest::goodFeatures()
{
    QFETCH(QByteArray, text);
    QFETCH(int, count);
    const auto job = read(tarOf(smallJob(text)));
    QVERIFY2(job.outcome.ok, qPrintable(job.text()));
    QCOMPARE(job.value.featureCount, qint64{count});
}

void JobRefusalsTest::matrix_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("line");
    const QByteArray step = "STEP {\nCOL=1\nNAME=pcb\n}\n";
    const QByteArray layer = "LAYER {\nROW=1\nTYPE=SIGNAL\nNAME=l1\n}\n";
    const auto row = [](const char *title, const QByteArray &text, int line) {
        QTest::newRow(title) << text << line;
    };
    row("empty", "", 0);
    row("comments only", "# nothing\n", 1);
    row("no layer", step, 4);
    row("no step", layer, 5);
    row("a word alone", step + "LAYER\n", 5);
    row("an end without beginning", step + "}\n", 5);
    row("a record inside a record", "STEP {\nLAYER {\n}\n}\n", 2);
    row("no end", step + "LAYER {\nROW=1\nTYPE=SIGNAL\nNAME=l1\n", 8);
    row("a layer without name", step + "LAYER {\nROW=1\nTYPE=SIGNAL\n}\n", 8);
    row("a layer without type", step + "LAYER {\nROW=1\nNAME=l1\n}\n", 8);
    row("a step without name", "STEP {\nCOL=1\n}\n" + layer, 3);
    row("an empty name", step + "LAYER {\nNAME=\n}\n", 6);
    row("a name with a slash", step + "LAYER {\nNAME=a/b\n}\n", 6);
    row("a name with a backslash", step + "LAYER {\nNAME=a\\b\n}\n", 6);
    row("a name of two points", step + "LAYER {\nNAME=..\n}\n", 6);
    row("a name of no encoding", step + "LAYER {\nNAME=\xff\xff\xff\n}\n", 6);
    row("a name of 300 letters", step + "LAYER {\nNAME=" + QByteArray(300, 'x') + "\n}\n", 6);
    row("a row that is no number", step + "LAYER {\nROW=first\n}\n", 6);
    row("a row of 20 digits", step + "LAYER {\nROW=99999999999999999999\n}\n", 6);
    row("a row below zero", step + "LAYER {\nROW=-1\n}\n", 6);
    row("a context of its own", step + "LAYER {\nTYPE=SIGNAL\nCONTEXT=BORAD\nNAME=l1\n}\n", 9);
    row("a polarity of its own", step + "LAYER {\nTYPE=SIGNAL\nPOLARITY=MAYBE\nNAME=l1\n}\n", 9);
    row("two layers of one name", step + layer + layer, 14);
    row("two layers that differ in capitals", step + layer + "LAYER {\nTYPE=SIGNAL\nNAME=L1\n}\n",
        13);
    row("two steps of one name", step + step + layer, 8);
    row("NUL", QByteArray("STEP {\nNAME=p\0b\n}\n", 18), 2);
}

void JobRefusalsTest::matrix()
{
    QFETCH(QByteArray, text);
    QFETCH(int, line);
    const auto job = read(tarOf(jobWithMatrix(text)));
    QVERIFY(!job);
    QVERIFY2(job.text().startsWith(QLatin1String("job/matrix/matrix")), qPrintable(job.text()));
    const bool namesLine = job.text().contains(QStringLiteral(" 第 %1 行").arg(line));
    QVERIFY2(namesLine == (line > 0), qPrintable(job.text()));
}

void JobRefusalsTest::jobs_data()
{
    QTest::addColumn<JobFiles>("files");
    QTest::addColumn<QString>("said");
    const JobFiles board = boardFiles();
    JobFiles two = board;
    two += boardFiles(QStringLiteral("other"));
    QTest::newRow("two jobs") << two << QStringLiteral("有多个料号");
    JobFiles none = board;
    none.removeFirst();
    QTest::newRow("no matrix") << none << QStringLiteral("没有找到 matrix/matrix");
    QTest::newRow("something else")
        << JobFiles{{QStringLiteral("top.gbr"), "G04"}} << QStringLiteral("没有找到 matrix/matrix");
    JobFiles twice = board;
    twice.append({QStringLiteral("board/matrix/matrix.Z"), compressed(board[0].content)});
    QTest::newRow("two matrices") << twice << QStringLiteral("重复");
    JobFiles layerTwice = smallJob("P 1 1 0 P 0 0\n");
    layerTwice.append(
        {QStringLiteral("job/steps/pcb/layers/l1/features.Z"), compressed("P 1 1 0 P 0 0\n")});
    QTest::newRow("two files of one layer") << layerTwice << QStringLiteral("两个 features");
    JobFiles noStep = board;
    noStep[0].content += "STEP {\nCOL=2\nNAME=panel\n}\n";
    QTest::newRow("a step without files") << noStep << QStringLiteral("步骤 panel 没有文件");
}

void JobRefusalsTest::jobs()
{
    QFETCH(JobFiles, files);
    QFETCH(QString, said);
    const auto job = read(tarOf(files));
    QVERIFY(!job);
    QVERIFY2(job.text().contains(said), qPrintable(job.text()));
}

void JobRefusalsTest::archives_data()
{
    QTest::addColumn<QByteArray>("archive");
    const QByteArray tgz = tgzOf(boardFiles());
    const QByteArray zip = zipOf(boardFiles());
    QTest::newRow("no archive") << QByteArray("a text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut tgz") << tgz.left(tgz.size() - 100);
    QTest::newRow("cut zip") << zip.left(zip.size() - 100);
    QByteArray flipped = zip;
    flipped[zip.size() / 2] = static_cast<char>(flipped[zip.size() / 2] ^ 4);
    QTest::newRow("zip with a flipped bit") << flipped;
    QVector<RawTarEntry> entries;
    for (const auto &file : boardFiles())
        entries.append({file.path.toUtf8(), file.content});
    QVector<RawTarEntry> leaving = entries;
    leaving.append(RawTarEntry{"../outside", "x"});
    QTest::newRow("an entry that leaves the folder") << rawTar(leaving);
    QVector<RawTarEntry> device = entries;
    device.append(RawTarEntry{"board/null", QByteArray(), '3'});
    QTest::newRow("a device") << rawTar(device);
    QVector<RawTarEntry> linked = entries;
    linked[0].name = "board/elsewhere";
    linked.append({"board/matrix/matrix", {}, '2', "../elsewhere"});
    QTest::newRow("a matrix that is a link") << rawTar(linked);
}

void JobRefusalsTest::archives()
{
    QFETCH(QByteArray, archive);
    const auto job = read(archive);
    QVERIFY(!job);
    QVERIFY(!job.text().isEmpty());
}

void JobRefusalsTest::linksInAFolder()
{
    QTemporaryDir dir;
    writeJob(dir.path(), boardFiles());
    if (!makeLink(QStringLiteral("/etc/passwd"), dir.filePath(QStringLiteral("board/link"))))
        QSKIP("there are no links here");
    NoProgress progress;
    const auto job = readOdbJob(dir.filePath(QStringLiteral("board")), {}, progress);
    QVERIFY(!job);
    QVERIFY2(job.text().contains(QLatin1String("board/link")), qPrintable(job.text()));
    const auto missing = readOdbJob(dir.filePath(QStringLiteral("nothing")), {}, progress);
    QVERIFY(!missing);
}

void JobRefusalsTest::bombs_data()
{
    QTest::addColumn<QByteArray>("packed");
    const QByteArray zeros = QByteArray("#\n").repeated(40 << 20);
    QTest::newRow("gzip inside the archive") << gzipped(zeros);
    QTest::newRow("gzip inside gzip is no text") << gzipped(gzipped(zeros));
    QTest::newRow(".Z inside the archive") << compressed(zeros);
}

void JobRefusalsTest::bombs()
{
    QFETCH(QByteArray, packed);
    LimitSettings limits;
    limits.archiveRatio = 50;
    const auto job = read(tarOf(smallJob(packed)), limits);
    QVERIFY(!job);
    QVERIFY2(job.text().contains(QLatin1String("layers/l1/features")), qPrintable(job.text()));
}

void JobRefusalsTest::endlessLayers()
{
    QByteArray matrix = "STEP {\nNAME=pcb\n}\n";
    for (int i = 0; i < 5000; ++i)
        matrix += "LAYER {\nTYPE=SIGNAL\nNAME=n" + QByteArray::number(i) + "\n}\n";
    const auto rows = read(tarOf(jobWithMatrix(matrix)));
    QVERIFY(!rows);
    QVERIFY2(rows.text().contains(QLatin1String("4000")), qPrintable(rows.text()));

    JobFiles files = smallJob("");
    for (int i = 0; i < 20001; ++i)
        files.append({QStringLiteral("job/steps/pcb/layers/n%1/features").arg(i), ""});
    const auto layers = read(tarOf(files));
    QVERIFY(!layers);
    QVERIFY2(layers.text().contains(QStringLiteral("层或步骤过多")), qPrintable(layers.text()));

    files = smallJob("");
    for (int i = 0; i < 20001; ++i)
        files.append({QStringLiteral("job/steps/n%1/stephdr").arg(i), ""});
    const auto steps = read(tarOf(files));
    QVERIFY(!steps);
    QVERIFY2(steps.text().contains(QStringLiteral("层或步骤过多")), qPrintable(steps.text()));
}

/// The same file linked into every layer of every step.
void JobRefusalsTest::moreFeaturesThanCanBeCounted()
{
    constexpr int layers = 2000;
    constexpr int steps = 10;
    constexpr int perFile = std::numeric_limits<int>::max() / (layers * steps) + 1;
    QByteArray matrix;
    for (int step = 0; step < steps; ++step)
        matrix += "STEP {\nNAME=s" + QByteArray::number(step) + "\n}\n";
    for (int layer = 0; layer < layers; ++layer)
        matrix += "LAYER {\nTYPE=SIGNAL\nNAME=l" + QByteArray::number(layer) + "\n}\n";
    QVector<RawTarEntry> entries{{"job/matrix/matrix", matrix}};
    const QByteArray first = "job/steps/s0/layers/l0/features";
    entries.append({first, QByteArray("P 1 1 0 P 0\n").repeated(perFile)});
    for (int file = 1; file < layers * steps; ++file)
        entries.append({"job/steps/s" + QByteArray::number(file / layers) + "/layers/l" +
                            QByteArray::number(file % layers) + "/features",
                        {},
                        '1',
                        first});
    LimitSettings limits; // links count as what they stand for
    limits.archiveBytes = std::numeric_limits<qint64>::max();
    limits.archiveRatio = std::numeric_limits<int>::max();
    const auto job = read(rawTar(entries), limits);
    QVERIFY(!job);
    QCOMPARE(job.text(), QStringLiteral("job/matrix/matrix：特征过多"));
    entries.removeLast();
    QVERIFY(read(rawTar(entries), limits));
}

void JobRefusalsTest::tooManyJobsInside()
{
    JobFiles files = boardFiles();
    for (int inner = 0; inner < 16; ++inner) {
        QCOMPARE(bool(read(tarOf(files))), true);
        files.append({QStringLiteral("board/input/%1/matrix/matrix").arg(inner), "x"});
    }
    const auto job = read(tarOf(files));
    QVERIFY(!job);
    QVERIFY2(job.text().contains(QStringLiteral("层或步骤过多")), qPrintable(job.text()));
}

void JobRefusalsTest::aPathThatIsTooLong()
{
    const QString folder = QString(150, QLatin1Char('x')) + QLatin1Char('/');
    JobFiles files = boardFiles();
    files.append({folder.repeated(3) + QStringLiteral("readme"), "nothing of the job"});
    QVERIFY(read(tarOf(files)));
    for (auto &file : files)
        file.path.prepend(folder.repeated(3));
    const auto job = read(tarOf(files));
    QVERIFY(!job);
    QVERIFY2(job.text().contains(QStringLiteral("路径过长")), qPrintable(job.text()));
}

void JobRefusalsTest::limitsOfAFolder()
{
    const QTemporaryDir dir;
    writeJob(dir.path(), boardFiles());
    const QString board = dir.filePath(QStringLiteral("board"));
    NoProgress progress;
    LimitSettings limits;
    limits.archiveEntries = 5;
    const auto many = readOdbJob(board, limits, progress);
    QVERIFY(!many);
    QVERIFY2(many.text().contains(QLatin1Char('5')), qPrintable(many.text()));
    QVERIFY(readOdbJob(board, {}, progress));
    QVERIFY(QDir(board).mkpath(QStringLiteral("d/").repeated(140)));
    QVERIFY(!readOdbJob(board, {}, progress));
}

void JobRefusalsTest::aMessageIsOneLine()
{
    const auto job = read(tarOf(smallJob("P 1 \x1b[31m" + QByteArray(500, 'x') + " 0 P\n")));
    QVERIFY(!job);
    QVERIFY(!job.text().contains(QChar(0x1b)));
    QVERIFY2(job.text().size() < 150, qPrintable(job.text()));
    QVERIFY(!job.outcome.cause.contains(QChar(0x1b)));
}

KODMS_TEST_MAIN(JobRefusalsTest, QCoreApplication)
#include "JobRefusalsTest.moc"
