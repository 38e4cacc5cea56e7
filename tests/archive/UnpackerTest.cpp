// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/Unpacker.h"
#include "services/archive/ArchiveProbe.h"
#include "tests/archive/RawRar.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/support/TestMain.h"
#include "tests/support/UnixTricks.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

#include <clocale>
#include <functional>
#include <limits>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

using Tree = QMap<QString, QByteArray>;

class StoppingProgress final : public Progress {
public:
    explicit StoppingProgress(std::function<void()> stop = {}) : m_stop(std::move(stop)) {}

    void setTotal(qint64 bytes) override { total = bytes; }

    void advance(qint64 bytes) override
    {
        done += bytes;
        if (m_stop && done > total / 2)
            m_stop();
    }

    bool isCancelled() const override { return cancelled; }

    qint64 total = 0;
    qint64 done = 0;
    bool cancelled = false;

private:
    std::function<void()> m_stop;
};

QByteArray gb18030(const QString &text)
{
    return QTextCodec::codecForName("GB18030")->fromUnicode(text);
}

QByteArray noise(int size)
{
    QByteArray bytes;
    quint32 state = 1;
    while (bytes.size() < size) {
        state = state * 1664525U + 1013904223U;
        bytes += static_cast<char>(state >> 24);
    }
    return bytes;
}

} // namespace

class UnpackerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    /// What Windows keeps for itself, or would cut, arrives under another name everywhere.
    void namesThatWindowsDoesNotHold()
    {
        const QTemporaryDir dir;
        const QString target = dir.filePath(QStringLiteral("料号"));
        QVERIFY(writeFile(dir.filePath(QStringLiteral("sent")), rawZip({{"CON", "1"},
                                                                        {"layers/nul.txt", "2"},
                                                                        {"COM1/aux.h", "3"},
                                                                        {"steps./end ", "4"},
                                                                        {"now:what", "5"},
                                                                        {"console", "6"}})));
        NoProgress progress;
        const auto unpacked =
            unpackArchive(dir.filePath(QStringLiteral("sent")), target, {}, progress);
        QVERIFY2(unpacked, qPrintable(unpacked.text()));
        QCOMPARE(unpacked.value, qint64{6});
        auto tree = treeOf(target);
        QCOMPARE(tree.take(QStringLiteral("_CON")), QByteArray("1"));
        QCOMPARE(tree.take(QStringLiteral("layers/_nul.txt")), QByteArray("2"));
        QCOMPARE(tree.take(QStringLiteral("_COM1/_aux.h")), QByteArray("3"));
        QCOMPARE(tree.take(QStringLiteral("steps%2E/end%20")), QByteArray("4"));
        QCOMPARE(tree.take(QStringLiteral("now%3Awhat")), QByteArray("5"));
        QCOMPARE(tree.take(QStringLiteral("console")), QByteArray("6"));
        for (const QByteArray &rest : qAsConst(tree))
            QCOMPARE(rest, QByteArray("/")); // the folders
    }

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_archive = m_dir->filePath(QStringLiteral("archive"));
        m_target = m_dir->filePath(QStringLiteral("target"));
    }

    void good_data()
    {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<Tree>("tree");
        const Tree two{{QStringLiteral("job"), "/"},
                       {QStringLiteral("job/a"), "content a"},
                       {QStringLiteral("job/料号.gbr"), "content b"}};
        const QByteArray chinese = QByteArray("job/料号.gbr");
        const auto row = [](const char *title, const QByteArray &archive, const Tree &tree) {
            QTest::newRow(title) << archive << tree;
        };
        row("zip, names marked as UTF-8",
            rawZip({{"job/a", "content a"}, {chinese, "content b", true}}), two);
        row("zip, unmarked UTF-8", rawZip({{"job/a", "content a"}, {chinese, "content b"}}), two);
        row("zip, unmarked GB18030",
            rawZip(
                {{"job/a", "content a"}, {gb18030(QStringLiteral("job/料号.gbr")), "content b"}}),
            two);
        row("zip, GB18030 that could be UTF-8, beside one that could not",
            rawZip({{gb18030(QStringLiteral("联通")), "1"}, {gb18030(QStringLiteral("料")), "2"}}),
            {{QStringLiteral("联通"), "1"}, {QStringLiteral("料"), "2"}});
        row("zip, GB18030 unmarked beside UTF-8 marked",
            rawZip({{gb18030(QStringLiteral("料")), "1"}, {QByteArray("层"), "2", true}}),
            {{QStringLiteral("料"), "1"}, {QStringLiteral("层"), "2"}});
        row("zip with the long directory end",
            rawZip({{"job/a", "content a"}, {chinese, "content b", true}}, {true, 1, false}), two);
        row("zip with backslashes", rawZip({{"job\\a", "1"}}),
            {{QStringLiteral("job"), "/"}, {QStringLiteral("job/a"), "1"}});
        const QByteArray inner = rawZip({{"a", "1"}});
        row("zip with an archive in it, which stays one", rawZip({{"inner.zip", inner}}),
            {{QStringLiteral("inner.zip"), inner}});
        row("tar", rawTar({{"job/", "", '5', {}}, {"job/a", "content a"}, {chinese, "content b"}}),
            two);
        row("tar, GB18030",
            rawTar(
                {{"job/a", "content a"}, {gb18030(QStringLiteral("job/料号.gbr")), "content b"}}),
            two);
        row("packed tar", gzipped(rawTar({{"job/a", "content a"}, {chinese, "content b"}})), two);
        row("tar packed in two pieces with padding",
            gzipped(rawTar({{"a", "1"}}).left(700)) + gzipped(rawTar({{"a", "1"}}).mid(700)) +
                QByteArray(512, '\0'),
            {{QStringLiteral("a"), "1"}});
        row("7z",
            sevenZip({{QStringLiteral("job/a"), "content a"},
                      {QStringLiteral("job/料号.gbr"), "content b"}}),
            two);
        row("rar of version 4", rawRar4({{"a", "content"}}), {{QStringLiteral("a"), "content"}});
        row("rar of version 5", rawRar5({{"job/a", "content a"}, {chinese, "content b"}}), two);
        row("tar with a hard link", rawTar({{"a", "1"}, {"d/b", "", '1', "a"}}),
            {{QStringLiteral("a"), "1"}, {QStringLiteral("d"), "/"}, {QStringLiteral("d/b"), "1"}});
        row("tar with symbolic links, one to the other",
            rawTar({{"d/first", "", '2', "second"}, {"d/second", "", '2', "../a"}, {"a", "1"}}),
            {{QStringLiteral("a"), "1"},
             {QStringLiteral("d"), "/"},
             {QStringLiteral("d/first"), "1"},
             {QStringLiteral("d/second"), "1"}});
        row("tar with a later version of a file", rawTar({{"a", "old"}, {"a", "new"}}),
            {{QStringLiteral("a"), "new"}});
        row("names that Windows cannot hold", rawZip({{"aux", "1"}, {"what?", "2"}}),
            {{QStringLiteral("_aux"), "1"}, {QStringLiteral("what%3F"), "2"}});
        row("empty file and folder",
            rawZip({{"e", ""}, {"d/", "", false, false, false, 0, 040755}}),
            {{QStringLiteral("e"), ""}, {QStringLiteral("d"), "/"}});
    }

    void good()
    {
        QFETCH(QByteArray, archive);
        QFETCH(Tree, tree);
        QVERIFY(writeFile(m_archive, archive));
        const auto unpacked = unpackArchive(m_archive, m_target, LimitSettings(), m_progress);
        QVERIFY2(unpacked, qPrintable(unpacked.outcome.cause));
        QCOMPARE(treeOf(m_target), tree);
        const auto isFile = [](const QByteArray &content) { return content != "/"; };
        QCOMPARE(unpacked.value, qint64{std::count_if(tree.cbegin(), tree.cend(), isFile)});
        QCOMPARE(neighbours(), QStringList({QStringLiteral("archive"), QStringLiteral("target")}));
        const auto probed = probeArchive(m_archive, LimitSettings(), m_progress);
        QVERIFY(probed);
        QCOMPARE(probed.value.files, unpacked.value);
    }

    /// Enough entries for several readers side by side: what they bring must come in
    /// order and whole.
    void aZipOfManyEntries()
    {
        QVector<RawZipEntry> entries;
        Tree tree{{QStringLiteral("d"), "/"}, {QStringLiteral("料"), "/"}};
        for (int i = 0; i < 300; ++i) {
            const QByteArray name =
                (i % 3 == 0 ? QByteArray("d/f") : QByteArray("料/f")) + QByteArray::number(i);
            const QByteArray content = noise(i % 50 == 7 ? 700000 + i : i * 3);
            entries.append({name, content, true});
            tree.insert(QString::fromUtf8(name), content);
            if (i % 40 == 0)
                entries.append({"d/", "", false, false, false, 0, 040755});
        }
        entries.append({"d/link", "f0", false, false, false, 0, 0120777});
        tree.insert(QStringLiteral("d/link"), tree.value(QStringLiteral("d/f0")));
        QVERIFY(writeFile(m_archive, rawZip(entries)));
        const auto unpacked = unpackArchive(m_archive, m_target, LimitSettings(), m_progress);
        QVERIFY2(unpacked, qPrintable(unpacked.outcome.cause));
        QCOMPARE(unpacked.value, qint64{301});
        QVERIFY(treeOf(m_target) == tree);
    }

    /// The sums of a gzip member may be cut in two by the reader's buffer of 256 KiB.
    void gzipMembersThatEndAtTheEdgeOfABuffer()
    {
        const int edge = 1 << 18;
        const QByteArray content = noise(edge + 2000);
        const QByteArray tar = rawTar({{"a", content}});
        int before = 0;
        int across = 0;
        for (int cut = edge + 300; cut < edge + 500; ++cut) {
            const QByteArray first = gzipped(tar.left(cut));
            before += first.size() <= edge ? 1 : 0;
            across += first.size() > edge && first.size() < edge + 8 ? 1 : 0;
            if (qAbs(first.size() - edge) > 12)
                continue;
            QVERIFY(writeFile(m_archive, first + gzipped(tar.mid(cut))));
            const auto unpacked = unpackArchive(m_archive, m_target, LimitSettings(), m_progress);
            QVERIFY2(unpacked, qPrintable(unpacked.outcome.cause));
            QVERIFY(treeOf(m_target).value(QStringLiteral("a")) == content);
        }
        QVERIFY(before > 0);
        QCOMPARE(across, 7);
    }

    /// Programs started by a service manager often have no locale at all.
    void chineseNamesWithoutALocale()
    {
        QVERIFY(writeFile(m_archive, sevenZip({{QStringLiteral("料号"), "1"}})));
        const QByteArray before = std::setlocale(LC_ALL, nullptr);
        std::setlocale(LC_ALL, "C");
        const auto unpacked = unpackArchive(m_archive, m_target, LimitSettings(), m_progress);
        std::setlocale(LC_ALL, before.constData());
        QVERIFY(unpacked);
        QVERIFY(QFileInfo(m_target + QStringLiteral("/料号")).isFile());
    }

    void archivesWithoutFilesChangeNothing_data()
    {
        QTest::addColumn<QByteArray>("archive");
        QTest::newRow("zip") << rawZip({});
        QTest::newRow("tar") << rawTar({});
        QTest::newRow("packed tar") << gzipped(rawTar({}));
        QTest::newRow("only a folder") << rawTar({{"d/", "", '5', {}}});
        QTest::newRow("only this folder") << rawTar({{"./", "", '5', {}}});
    }

    void archivesWithoutFilesChangeNothing()
    {
        QFETCH(QByteArray, archive);
        QVERIFY(writeFile(m_archive, archive));
        const auto unpacked = unpackArchive(m_archive, m_target, LimitSettings(), m_progress);
        QVERIFY(unpacked);
        QCOMPARE(unpacked.value, qint64{0});
        QCOMPARE(neighbours(), QStringList(QStringLiteral("archive")));
    }

    void filesOfTheTargetStay()
    {
        QVERIFY(writeFile(m_target + QStringLiteral("/mine"), "mine"));
        QVERIFY(writeFile(m_target + QStringLiteral("/a"), "old"));
        QVERIFY(writeFile(m_archive, rawZip({{"a", "new"}})));
        const auto unpacked =
            unpackArchive(m_archive, m_target + QLatin1Char('/'), LimitSettings(), m_progress);
        QVERIFY(unpacked);
        QCOMPARE(treeOf(m_target),
                 (Tree{{QStringLiteral("a"), "new"}, {QStringLiteral("mine"), "mine"}}));
        QCOMPARE(neighbours(), QStringList({QStringLiteral("archive"), QStringLiteral("target")}));
    }

    void aTargetBehindALink()
    {
        QVERIFY(QDir().mkpath(m_dir->filePath(QStringLiteral("real/downloads"))));
        if (!makeLink(m_dir->filePath(QStringLiteral("real/downloads")), m_target))
            QSKIP("there are no links here");
        QVERIFY(writeFile(m_archive, rawZip({{"a", "1"}})));
        QVERIFY(unpackArchive(m_archive, m_target, LimitSettings(), m_progress));
        QCOMPARE(treeOf(m_dir->filePath(QStringLiteral("real"))),
                 (Tree{{QStringLiteral("downloads"), "/"}, {QStringLiteral("downloads/a"), "1"}}));
    }

    void limits_data()
    {
        QTest::addColumn<qint64>("entries");
        QTest::addColumn<qint64>("bytes");
        QTest::addColumn<qint64>("ratio");
        QTest::addColumn<bool>("allowed");
        const qint64 mebibyte = 1 << 20;
        QTest::newRow("enough of all") << qint64{3} << 20 * mebibyte << qint64{10} << true;
        QTest::newRow("an entry too many") << qint64{2} << 20 * mebibyte << qint64{10} << false;
        QTest::newRow("too many bytes") << qint64{3} << 19 * mebibyte << qint64{10} << false;
        QTest::newRow("swells too much") << qint64{3} << 30 * mebibyte << qint64{1} << false;
    }

    /// Three entries, 20 MiB from some 10 MiB.
    void limits()
    {
        QFETCH(qint64, entries);
        QFETCH(qint64, bytes);
        QFETCH(qint64, ratio);
        QFETCH(bool, allowed);
        const int half = 10 << 20;
        QVERIFY(writeFile(m_archive, gzipped(rawTar({{"noise", noise(half - 1)},
                                                     {"zeros", QByteArray(half, '\0')},
                                                     {"one", "1"}}))));
        LimitSettings limits;
        limits.archiveEntries = entries;
        limits.archiveBytes = bytes;
        limits.archiveRatio = ratio;
        QCOMPARE(bool(unpackArchive(m_archive, m_target, limits, m_progress)), allowed);
        QCOMPARE(bool(probeArchive(m_archive, limits, m_progress)), allowed);
        QCOMPARE(QFileInfo::exists(m_target), allowed);
    }

    void anyRatioLeavesTheBytesAsTheLimit()
    {
        LimitSettings limits;
        limits.archiveRatio = std::numeric_limits<qint64>::max();
        QCOMPARE(allowedBytes(10 << 20, limits), limits.archiveBytes);
    }

    void progressEndsAtTheWhole()
    {
        QVERIFY(writeFile(m_archive, gzipped(rawTar({{"noise", noise(3 << 20)}}))));
        StoppingProgress progress;
        QVERIFY(unpackArchive(m_archive, m_target, LimitSettings(), progress));
        QCOMPARE(progress.total, QFileInfo(m_archive).size());
        QVERIFY(progress.done > progress.total * 9 / 10);
        QVERIFY(progress.done <= progress.total);
    }

    void cancelledLeavesNothing()
    {
        QVERIFY(writeFile(m_archive, gzipped(rawTar({{"noise", noise(3 << 20)}}))));
        StoppingProgress progress([&progress] { progress.cancelled = true; });
        QVERIFY(!unpackArchive(m_archive, m_target, LimitSettings(), progress));
        QCOMPARE(neighbours(), QStringList(QStringLiteral("archive")));
    }

    void remainsOfAKilledUnpackAreSwept()
    {
        QVERIFY(writeFile(m_archive, gzipped(rawTar({{"noise", noise(3 << 20)}}))));
        const auto ended = exitCodeOfCopy([this] {
            StoppingProgress progress([] { endAtOnce(9); });
            return unpackArchive(m_archive, m_target, LimitSettings(), progress) ? 0 : 1;
        });
        if (!ended)
            QSKIP("a process cannot be copied here");
        QCOMPARE(*ended, 9);
        QVERIFY(neighbours().size() > 1);
        QVERIFY(unpackArchive(m_archive, m_target, LimitSettings(), m_progress));
        QCOMPARE(neighbours(), QStringList({QStringLiteral("archive"), QStringLiteral("target")}));
    }

    void aMissingArchive()
    {
        const auto unpacked = unpackArchive(m_archive, m_target, LimitSettings(), m_progress);
        QVERIFY(!unpacked);
        QVERIFY(unpacked.text().contains(m_archive));
    }

private:
    QStringList neighbours() const
    {
        return QDir(m_dir->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDir::Name);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_archive;
    QString m_target;
    NoProgress m_progress;
};

KODMS_TEST_MAIN(UnpackerTest, QCoreApplication)
#include "UnpackerTest.moc"
