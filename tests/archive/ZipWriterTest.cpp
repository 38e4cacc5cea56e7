// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/ZipWriter.h"
#include "services/archive/Unpacker.h"
#include "tests/archive/SampleArchives.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <archive.h>
#include <archive_entry.h>
#include <clocale>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

using Tree = QMap<QString, QByteArray>;

QByteArray noise(int size)
{
    QByteArray bytes;
    quint32 state = 3;
    while (bytes.size() < size) {
        state = state * 1664525U + 1013904223U;
        bytes += static_cast<char>(state >> 24);
    }
    return bytes;
}

} // namespace

class ZipWriterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { std::setlocale(LC_CTYPE, "C.UTF-8"); }

    void init()
    {
        m_file = FileHandle(); // some systems keep the folder of a file that is open
        m_dir = std::make_unique<QTemporaryDir>();
        auto created = FileHandle::createNew(path("a.zip"));
        QVERIFY(created);
        m_file = std::move(created.value);
    }

    void contents_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("piece");
        QTest::newRow("a byte") << QByteArray("1") << 1;
        QTest::newRow("text in pieces") << QByteArray("hello, ").repeated(5000) << 7;
        QTest::newRow("what does not shrink") << noise(100000) << 100000;
        QTest::newRow("as large as the buffer") << noise(1 << 19) << (1 << 18);
        QTest::newRow("larger than the buffer") << noise(3000001) << (1 << 18);
        QTest::newRow("zeros") << QByteArray(3000000, '\0') << (1 << 18);
    }

    void contents()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, piece);
        ZipWriter zip(m_file);
        QVERIFY(zip.addFolder("d/", 1700000000));
        QVERIFY(add(zip, "d/before", "small"));
        QVERIFY(add(zip, "d/a", content, piece));
        QVERIFY(add(zip, "d/empty", ""));
        QVERIFY(add(zip, "层", "after"));
        QVERIFY(zip.finish());
        QCOMPARE(unpackedTree(), (Tree{{QStringLiteral("d"), "/"},
                                       {QStringLiteral("d/a"), content},
                                       {QStringLiteral("d/before"), "small"},
                                       {QStringLiteral("d/empty"), ""},
                                       {QStringLiteral("层"), "after"}}));
    }

    /// More than the old form can count.
    void seventyThousandEntries()
    {
        ZipWriter zip(m_file);
        for (int i = 0; i < 70000; ++i)
            QVERIFY(zip.addFolder("d" + QByteArray::number(i) + '/', 1700000000));
        QVERIFY(add(zip, "last", "1"));
        QVERIFY(zip.finish());
        QCOMPARE(listed(true).size(), 70001);
        QCOMPARE(listed(false).size(), 70001);
    }

    void bothPlacesTellTheSame()
    {
        ZipWriter zip(m_file);
        QVERIFY(add(zip, "a", noise(600000)));
        QVERIFY(add(zip, "b", "1"));
        QVERIFY(zip.finish());
        QCOMPARE(listed(true), QStringList({QStringLiteral("a 600000 1700000000 644"),
                                            QStringLiteral("b 1 1700000000 644")}));
        const QStringList heads = listed(false);
        QCOMPARE(heads.size(), 2);
        QVERIFY(heads.first().startsWith(QStringLiteral("a 600000 1700000000")));
    }

private:
    QString path(const char *name) const { return m_dir->filePath(QString::fromLatin1(name)); }

    static bool add(ZipWriter &zip, const QByteArray &name, const QByteArray &content,
                    int piece = 1 << 18)
    {
        if (!zip.beginFile(name, 1700000000, content.size()))
            return false;
        for (int at = 0; at < content.size(); at += piece)
            if (!zip.write(content.constData() + at, qMin(piece, content.size() - at)))
                return false;
        return bool(zip.endFile());
    }

    Tree unpackedTree()
    {
        NoProgress progress;
        const auto unpacked =
            unpackArchive(path("a.zip"), path("target"), LimitSettings(), progress);
        return unpacked ? treeOf(path("target"))
                        : Tree{{QStringLiteral("failed"), unpacked.outcome.cause.toUtf8()}};
    }

    /// What the archive library makes of it, by the directory at the end or by the
    /// heads before the entries.
    QStringList listed(bool byDirectory) const
    {
        QStringList entries;
        archive *reader = archive_read_new();
        if (byDirectory)
            archive_read_support_format_zip_seekable(reader);
        else
            archive_read_support_format_zip_streamable(reader);
        archive_read_open_filename(reader, path("a.zip").toUtf8().constData(), 10240);
        archive_entry *entry = nullptr;
        while (archive_read_next_header(reader, &entry) == ARCHIVE_OK)
            entries << QStringLiteral("%1 %2 %3 %4")
                           .arg(QString::fromUtf8(archive_entry_pathname_utf8(entry)))
                           .arg(archive_entry_size(entry))
                           .arg(archive_entry_mtime(entry))
                           .arg(archive_entry_perm(entry), 0, 8);
        archive_read_free(reader);
        return entries;
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    FileHandle m_file;
};

KODMS_TEST_MAIN(ZipWriterTest, QCoreApplication)
#include "ZipWriterTest.moc"
