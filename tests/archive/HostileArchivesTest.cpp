// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/ArchiveProbe.h"
#include "services/archive/Unpacker.h"
#include "tests/archive/RawRar.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

QByteArray flipped(QByteArray bytes, int at)
{
    bytes[at] = static_cast<char>(bytes.at(at) ^ 0x10);
    return bytes;
}

/// Content that does not shrink, so that a cut or a flip hits it.
QByteArray noise(int size)
{
    QByteArray bytes;
    quint32 state = 7;
    while (bytes.size() < size) {
        state = state * 1664525U + 1013904223U;
        bytes += static_cast<char>(state >> 24);
    }
    return bytes;
}

QByteArray manyFiles(int count)
{
    QVector<RawTarEntry> entries;
    for (int i = 0; i < count; ++i)
        entries.append({"f" + QByteArray::number(i), ""});
    return rawTar(entries);
}

} // namespace

/// What must not happen, whatever a customer sends: a file outside the target, a
/// changed target, something left behind, a hang.
class HostileArchivesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void refused_data()
    {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<QString>("named");
        wayOuts();
        links();
        oddEntries();
        clashes();
        damaged();
        swelling();
    }

    void refused()
    {
        QFETCH(QByteArray, archive);
        QFETCH(QString, named);
        const QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("sent"));
        const QString target = dir.filePath(QStringLiteral("a/b/target"));
        QVERIFY(writeFile(file, archive));
        QVERIFY(writeFile(target + QStringLiteral("/good"), "before"));
        const auto before = treeOf(dir.path());
        LimitSettings limits;
        limits.archiveEntries = 1000;
        limits.archiveBytes = qint64{64} << 20;
        QElapsedTimer timer;
        timer.start();
        NoProgress progress;
        const auto unpacked = unpackArchive(file, target, limits, progress);
        const auto probed = probeArchive(file, limits, progress);
        QVERIFY(timer.elapsed() < 2000);
        QVERIFY(!unpacked);
        QVERIFY(!probed);
        QVERIFY2(unpacked.text().contains(named), qPrintable(unpacked.text()));
        QCOMPARE(probed.text(), unpacked.text());
        QVERIFY(treeOf(dir.path()) == before);
    }

private:
    static void row(const char *title, const QByteArray &archive, const char *named = "sent")
    {
        QTest::newRow(title) << archive << QString::fromUtf8(named);
    }

    static void wayOuts()
    {
        row("zip: a way out", rawZip({{"good", "1"}, {"../evil", "2"}}), "../evil");
        row("zip: a way out further in", rawZip({{"x/../../../evil", "2"}}), "x/../../../evil");
        row("zip: absolute", rawZip({{"/tmp/evil", "2"}}), "/tmp/evil");
        row("zip: a drive", rawZip({{"C:/evil", "2"}}), "C:/evil");
        row("zip: a way out with backslashes", rawZip({{"..\\evil", "2"}}), "evil");
        row("zip: a network path", rawZip({{"\\\\host\\share\\evil", "2"}}), "evil");
        row("tar: a way out", rawTar({{"good", "1"}, {"../evil", "2"}}), "../evil");
        row("tar: absolute", rawTar({{"/tmp/evil", "2"}}), "/tmp/evil");
        row("packed tar: a way out", gzipped(rawTar({{"../../evil", "2"}})), "../../evil");
        row("7z: a way out", sevenZip({{QStringLiteral("../evil"), "2"}}), "../evil");
        row("rar: a way out", rawRar4({{"../evil", "2"}}), "evil");
        row("rar of version 5: a way out", rawRar5({{"../evil", "2"}}), "evil");
    }

    static void links()
    {
        row("tar: a link out", rawTar({{"link", "", '2', "../.."}}), "link");
        row("tar: an absolute link", rawTar({{"link", "", '2', "/etc"}}), "link");
        row("tar: writing through a link", rawTar({{"link", "", '2', "sub"}, {"link/evil", "2"}}),
            "link");
        row("tar: a hard link out", rawTar({{"link", "", '1', "../../good"}}), "../../good");
        row("tar: a hard link to an absolute path", rawTar({{"link", "", '1', "/etc/passwd"}}),
            "/etc/passwd");
        row("tar: links in a circle",
            rawTar({{"one", "", '2', "two"}, {"two", "", '2', "one"}, {"good", "1"}}), "one");
        row("tar: a link to a folder", rawTar({{"d/a", "1"}, {"link", "", '2', "d"}}), "link");
        row("zip: a link out", rawZip({{"link", "../../evil", false, false, false, 0, 0120777}}),
            "link");
    }

    static void oddEntries()
    {
        row("tar: a pipe", rawTar({{"pipe", "", '6', {}}}), "pipe");
        row("tar: a character device", rawTar({{"device", "", '3', {}}}), "device");
        row("tar: a block device", rawTar({{"device", "", '4', {}}}), "device");
        row("tar: 400 folders deep", rawTar({{QByteArray("d/").repeated(400) + "a", "1"}}), "d/d");
        row("tar: a name of 300 characters", rawTar({{QByteArray(300, 'n'), "1"}}), "nnn");
        row("zip: a name in no encoding", rawZip({{"a\xff\xff", "1"}}));
        row("zip: encrypted", rawZip({{"a", "1", false, true}}));
        row("tar: too many entries", manyFiles(1001), "f1000");
    }

    static void clashes()
    {
        row("zip: names that differ in case", rawZip({{"Top.gbr", "1"}, {"top.GBR", "2"}}),
            "top.GBR");
        row("zip: folders that differ in case", rawZip({{"Job/a", "1"}, {"job/b", "2"}}), "job");
        row("tar: a file that is a folder", rawTar({{"a", "1"}, {"a/b", "2"}}), "a");
        row("tar: two ways to write an accent", rawTar({{"\xc3\xa9", "1"}, {"e\xcc\x81", "2"}}),
            "e\xcc\x81");
        row("zip: mapped to the same name", rawZip({{"con", "1"}, {"_con", "2"}}), "_con");
    }

    static void damaged()
    {
        const QByteArray zip = rawZip({{"good", noise(5000)}, {"bad", noise(5000)}});
        const QByteArray tgz = gzipped(rawTar({{"good", noise(500000)}, {"bad", noise(500000)}}));
        row("zip: a flipped bit", flipped(zip, 8000), "bad");
        row("zip: a wrong sum", rawZip({{"good", "1"}, {"bad", "2", false, false, true}}), "bad");
        row("zip: cut", zip.left(zip.size() / 2));
        row("zip: the last byte is missing", zip.left(zip.size() - 1));
        row("zip: half a directory", rawZip({{"a", "1"}, {"b", "2"}}, {false, 1, true}));
        row("zip: the directory names one entry a thousand times",
            rawZip({{"a", "1"}}, {false, 1000, false}));
        row("zip: an unknown method", rawZip({{"bad", "1", false, false, false, 77}}), "bad");
        row("zip: a declared size that is too small",
            rawZip({{"bad", noise(5000), false, false, false, 0, 0100644, 10}}), "bad");
        row("packed tar: a flipped bit", flipped(tgz, tgz.size() / 2));
        row("packed tar: cut", tgz.left(tgz.size() - 1000), "bad");
        row("packed tar: cut in its head", tgz.left(12));
        row("packed, but no tar", gzipped("hello, hello, hello"));
        row("tar: cut", rawTar({{"bad", noise(5000)}}).left(3000), "bad");
        row("rar: a flipped bit", flipped(rawRar4({{"bad", noise(5000)}}), 3000));
        row("rar of version 5: a flipped bit",
            flipped(rawRar5({{"good", "1"}, {"bad", noise(5000)}}), 3000), "bad");
        row("packed tar: a wrong sum at the end", flipped(tgz, tgz.size() - 6));
        row("packed tar: something after the end", tgz + "garbage");
        row("rar: cut", rawRar4({{"bad", noise(5000)}}).left(2000));
        row("7z: a flipped bit", flipped(sevenZip({{QStringLiteral("bad"), noise(5000)}}), 2000));
        row("text called an archive", "hello");
        row("nothing", "");
    }

    static void swelling()
    {
        const QByteArray zeros(80 << 20, '\0');
        row("packed tar: zeros without end", gzipped(rawTar({{"zeros", zeros}})), "zeros");
        row("tar: many links to one large file",
            rawTar(
                {{"large", noise(30 << 20)}, {"one", "", '1', "large"}, {"two", "", '1', "large"}}),
            "two");
    }
};

KODMS_TEST_MAIN(HostileArchivesTest, QCoreApplication)
#include "HostileArchivesTest.moc"
