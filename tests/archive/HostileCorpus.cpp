// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/archive/HostileCorpus.h"

#include "tests/archive/RawRar.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"

namespace KODMS::Tests {

namespace {

using Corpus = QVector<HostileArchive>;

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

QByteArray manyInZip(int count)
{
    QVector<RawZipEntry> entries;
    for (int i = 0; i < count; ++i)
        entries.append({"f" + QByteArray::number(i), noise(40)});
    return rawZip(entries);
}

/// Enough entries for several readers; each is a header of 33 bytes and its content.
QByteArray flippedAmongMany()
{
    QByteArray zip = manyInZip(200);
    return flipped(zip, zip.indexOf("f77") + 20);
}

/// Few entries, each in folders of its own that no entry names.
QByteArray manyFolders()
{
    QVector<RawTarEntry> entries;
    for (int i = 0; i < 20; ++i)
        entries.append(
            {"top" + QByteArray::number(i) + '/' + QByteArray("d/").repeated(60) + 'f', ""});
    return rawTar(entries);
}

/// A zip64 file with a number of eight bytes, so far behind the mark, at its limit.
QByteArray withLargestNumber(const QByteArray &mark, int behind)
{
    QByteArray zip = rawZip({{"a", "1"}}, {true, 1, false});
    const QByteArray largest = QByteArray(7, '\xff') + '\x7f';
    return zip.replace(zip.indexOf(mark) + behind, largest.size(), largest);
}

/// Thousands of smallest blocks of a kind that nobody knows, and nothing else.
QByteArray rarOfManyBlocks()
{
    const QByteArray head = rawRar4({}).left(20);
    return head + QByteArray("e\x0eu\0\0\x07\0", 7).repeated(6000);
}

QByteArray zeros(int size)
{
    return QByteArray(size, '\0');
}

/// What is between the head and the sums of a gzip file.
QByteArray deflated(const QByteArray &bytes)
{
    const QByteArray packed = gzipped(bytes);
    return packed.mid(10, packed.size() - 18);
}

/// A tar attribute: its own length, key and value in a line.
QByteArray attribute(const QByteArray &key, const QByteArray &value)
{
    const QByteArray rest = " " + key + "=" + value + "\n";
    return QByteArray::number(rest.size() + 2) + rest;
}

/// Marked as solid and as packed by the usual method.
QByteArray solidRar()
{
    return rawRar4({{"first", "1"}, {"second", "2"}}, 0, Rar4FileSolid);
}

void add(Corpus &corpus, const char *title, const QByteArray &archive, const char *named = "sent")
{
    corpus.append({title, archive, QString::fromUtf8(named)});
}

void wayOuts(Corpus &corpus)
{
    add(corpus, "zip: a way out", rawZip({{"good", "1"}, {"../evil", "2"}}), "../evil");
    add(corpus, "zip: a way out further in", rawZip({{"x/../../../evil", "2"}}), "x/../../../evil");
    add(corpus, "zip: absolute", rawZip({{"/tmp/evil", "2"}}), "/tmp/evil");
    add(corpus, "zip: a drive", rawZip({{"C:/evil", "2"}}), "C:/evil");
    add(corpus, "zip: a way out with backslashes", rawZip({{"..\\evil", "2"}}), "evil");
    add(corpus, "zip: a network path", rawZip({{"\\\\host\\share\\evil", "2"}}), "evil");
    add(corpus, "tar: a way out", rawTar({{"good", "1"}, {"../evil", "2"}}), "../evil");
    add(corpus, "tar: absolute", rawTar({{"/tmp/evil", "2"}}), "/tmp/evil");
    add(corpus, "packed tar: a way out", gzipped(rawTar({{"../../evil", "2"}})), "../../evil");
    add(corpus, "7z: a way out", sevenZip({{QStringLiteral("../evil"), "2"}}), "../evil");
    add(corpus, "rar: a way out", rawRar4({{"../evil", "2"}}), "evil");
    add(corpus, "rar of version 5: a way out", rawRar5({{"../evil", "2"}}), "evil");
    add(corpus, "zip: nothing but a way out", rawZip({{"..", "2"}}), "..");
    add(corpus, "zip: harmless in the directory, a way out at the content",
        rawZip({{"good", "2", false, false, false, 0, 0100644, -1, {}, "../evil"}}), "evil");
    add(corpus, "tar: a way out in an attribute",
        rawTar({{"attributes", attribute("path", "../evil"), 'x', {}}, {"good", "2"}}), "../evil");
    add(corpus, "tar: absolute in a long name",
        rawTar({{"/" + QByteArray(120, 'n') + "/evil", "2"}}), "nnn");
    add(corpus, "7z: absolute", sevenZip({{QStringLiteral("/tmp/evil"), "2"}}), "/tmp/evil");
    add(corpus, "rar of version 5: a drive", rawRar5({{"C:/evil", "2"}}), "evil");
}

void links(Corpus &corpus)
{
    add(corpus, "tar: a link out", rawTar({{"link", "", '2', "../.."}}), "link");
    add(corpus, "tar: an absolute link", rawTar({{"link", "", '2', "/etc"}}), "link");
    add(corpus, "tar: writing through a link",
        rawTar({{"link", "", '2', "sub"}, {"link/evil", "2"}}), "link");
    add(corpus, "tar: a hard link out", rawTar({{"link", "", '1', "../../good"}}), "../../good");
    add(corpus, "tar: a hard link to an absolute path", rawTar({{"link", "", '1', "/etc/passwd"}}),
        "/etc/passwd");
    add(corpus, "tar: links in a circle",
        rawTar({{"one", "", '2', "two"}, {"two", "", '2', "one"}, {"good", "1"}}), "one");
    add(corpus, "tar: a link to a folder", rawTar({{"d/a", "1"}, {"link", "", '2', "d"}}), "link");
    add(corpus, "zip: a link out",
        rawZip({{"link", "../../evil", false, false, false, 0, 0120777}}), "link");
    add(corpus, "tar: a long link out",
        rawTar({{"././@LongLink", QByteArray("../").repeated(60) + "etc" + '\0', 'K', {}},
                {"link", "", '2', "here"}}),
        "link");
    add(corpus, "tar: a link out in an attribute",
        rawTar({{"attributes", attribute("linkpath", "../../good"), 'x', {}},
                {"link", "", '2', "here"}}),
        "link");
}

void oddEntries(Corpus &corpus)
{
    add(corpus, "tar: a pipe", rawTar({{"pipe", "", '6', {}}}), "pipe");
    add(corpus, "tar: a character device", rawTar({{"device", "", '3', {}}}), "device");
    add(corpus, "tar: a block device", rawTar({{"device", "", '4', {}}}), "device");
    add(corpus, "tar: 400 folders deep", rawTar({{QByteArray("d/").repeated(400) + "a", "1"}}),
        "d/d");
    add(corpus, "tar: a name of 300 characters", rawTar({{QByteArray(300, 'n'), "1"}}), "nnn");
    add(corpus, "zip: a name in no encoding", rawZip({{"a\xff\xff", "1"}}));
    add(corpus, "zip: encrypted", rawZip({{"a", "1", false, true}}));
    add(corpus, "tar: too many entries", manyFiles(1001), "f1000");
    add(corpus, "tar: too many folders that no entry names", manyFolders(), "top16");
    add(corpus, "zip: a character device",
        rawZip({{"device", "", false, false, false, 0, 0020644}}), "device");
    add(corpus, "zip: 400 folders deep", rawZip({{QByteArray("d/").repeated(400) + "a", "1"}}),
        "d/d");
    add(corpus, "zip: too many entries", manyInZip(1001));
    add(corpus, "rar: encrypted", rawRar4({{"a", "1"}}, 0, Rar4FileEncrypted));
    add(corpus, "rar: encrypted headers", rawRar4({{"a", "1"}}, Rar4HeadersEncrypted));
    add(corpus, "rar of version 5: encrypted headers", encryptedRar5());
    add(corpus, "rar: solid", solidRar());
    add(corpus, "rar: too many blocks", rarOfManyBlocks(), "条目超过");
}

void clashes(Corpus &corpus)
{
    add(corpus, "zip: names that differ in case", rawZip({{"Top.gbr", "1"}, {"top.GBR", "2"}}),
        "top.GBR");
    add(corpus, "zip: folders that differ in case", rawZip({{"Job/a", "1"}, {"job/b", "2"}}),
        "job");
    add(corpus, "tar: a file that is a folder", rawTar({{"a", "1"}, {"a/b", "2"}}), "a");
    add(corpus, "tar: two ways to write an accent", rawTar({{"\xc3\xa9", "1"}, {"e\xcc\x81", "2"}}),
        "e\xcc\x81");
    add(corpus, "zip: mapped to the same name", rawZip({{"con", "1"}, {"_con", "2"}}), "_con");
}

void damaged(Corpus &corpus)
{
    const QByteArray zip = rawZip({{"good", noise(5000)}, {"bad", noise(5000)}});
    const QByteArray tgz = gzipped(rawTar({{"good", noise(500000)}, {"bad", noise(500000)}}));
    add(corpus, "zip: a flipped bit", flipped(zip, 8000), "bad");
    add(corpus, "zip: a wrong sum", rawZip({{"good", "1"}, {"bad", "2", false, false, true}}),
        "bad");
    add(corpus, "zip: cut", zip.left(zip.size() / 2));
    add(corpus, "zip: the last byte is missing", zip.left(zip.size() - 1));
    add(corpus, "zip: half a directory", rawZip({{"a", "1"}, {"b", "2"}}, {false, 1, true}));
    add(corpus, "zip: the directory names one entry a thousand times",
        rawZip({{"a", "1"}}, {false, 1000, false}));
    add(corpus, "zip: an unknown method", rawZip({{"bad", "1", false, false, false, 77}}), "bad");
    add(corpus, "zip: a declared size that is too small",
        rawZip({{"bad", noise(5000), false, false, false, 0, 0100644, 10}}), "bad");
    add(corpus, "packed tar: a flipped bit", flipped(tgz, tgz.size() / 2));
    add(corpus, "packed tar: cut", tgz.left(tgz.size() - 1000), "bad");
    add(corpus, "packed tar: cut in its head", tgz.left(12));
    add(corpus, "packed, but no tar", gzipped("hello, hello, hello"));
    add(corpus, "tar: cut", rawTar({{"bad", noise(5000)}}).left(3000), "bad");
    add(corpus, "rar: a flipped bit", flipped(rawRar4({{"bad", noise(5000)}}), 3000));
    add(corpus, "rar of version 5: a flipped bit",
        flipped(rawRar5({{"good", "1"}, {"bad", noise(5000)}}), 3000), "bad");
    add(corpus, "packed tar: a wrong sum at the end", flipped(tgz, tgz.size() - 6));
    add(corpus, "packed tar: something after the end", tgz + "garbage");
    add(corpus, "rar: cut", rawRar4({{"bad", noise(5000)}}).left(2000));
    add(corpus, "7z: a flipped bit",
        flipped(sevenZip({{QStringLiteral("bad"), noise(5000)}}), 2000));
    add(corpus, "text called an archive", "hello");
    add(corpus, "nothing", "");
    add(corpus, "zip: a flipped bit among many entries", flippedAmongMany(), "f77");
    add(corpus, "zip: overlapping entries of a thousand names",
        rawZip({{"a", "1"}}, {false, 1000, false, true}));
    add(corpus, "zip: an entry behind the end of the file",
        rawZip({{"bad", "1", false, false, false, 0, 0100644, -1, {}, {}, 1 << 30}}));
    add(corpus, "zip: the directory's end names more entries than there can be",
        rawZip({{"a", "1"}}, {true, 1, false, false, qint64{1} << 40}));
    add(corpus, "zip: a directory behind the end of any file", withLargestNumber("PK\x06\x06", 48));
    add(corpus, "zip: a directory longer than any file", withLargestNumber("PK\x06\x06", 40));
    add(corpus, "zip: the directory's end is behind the end of any file",
        withLargestNumber("PK\x06\x07", 8));
    add(corpus, "zip: 10 bytes declared, 768 KiB delivered",
        rawZip(
            {{"bad", zeros(10), false, false, false, 8, 0100644, 10, deflated(zeros(768 << 10))}}),
        "bad");
    add(corpus, "packed twice", gzipped(gzipped(rawTar({{"a", "1"}}))));
    add(corpus, "tar: a size beyond the end of the file",
        rawTar({{"bad", "1", '0', {}, "77777777777"}}), "bad");
    add(corpus, "7z: cut", sevenZip({{QStringLiteral("bad"), noise(5000)}}).left(3000));
    add(corpus, "7z: its head is damaged", flipped(sevenZip({{QStringLiteral("bad"), "1"}}), 20));
}

void swelling(Corpus &corpus)
{
    const QByteArray content = zeros(80 << 20);
    add(corpus, "packed tar: zeros without end", gzipped(rawTar({{"zeros", content}})), "zeros");
    add(corpus, "tar: many links to one large file",
        rawTar({{"large", noise(30 << 20)}, {"one", "", '1', "large"}, {"two", "", '1', "large"}}),
        "two");
    add(corpus, "zip: zeros without end",
        rawZip({{"zeros", content, false, false, false, 8, 0100644, -1, deflated(content)}}),
        "zeros");
    add(corpus, "zip: zeros that are declared as few",
        rawZip({{"zeros", content, false, false, false, 8, 0100644, 1000, deflated(content)}}),
        "zeros");
}

} // namespace

QVector<HostileArchive> hostileArchives()
{
    Corpus corpus;
    wayOuts(corpus);
    links(corpus);
    oddEntries(corpus);
    clashes(corpus);
    damaged(corpus);
    swelling(corpus);
    return corpus;
}

} // namespace KODMS::Tests
