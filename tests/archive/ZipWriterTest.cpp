// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/ZipWriter.h"
#include "services/archive/Unpacker.h"
#include "tests/archive/SampleArchives.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

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

    void init()
    {
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
        QCOMPARE(listedBy(QStringLiteral("bsdtar -tf")).size(), 70001);
    }

    void timesAndModesAreThoseOfTheEntry()
    {
        ZipWriter zip(m_file);
        QVERIFY(add(zip, "a", "1"));
        QVERIFY(zip.finish());
        const QStringList listed = listedBy(QStringLiteral("TZ=UTC bsdtar -tvf"));
        QCOMPARE(listed.size(), 1);
        QVERIFY2(listed.first().contains(QStringLiteral("-rw-r--r--")), qPrintable(listed.first()));
        QVERIFY2(listed.first().contains(QStringLiteral("Nov 14  2023")),
                 qPrintable(listed.first()));
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

    /// What another program makes of it.
    QStringList listedBy(const QString &command) const
    {
        QProcess process;
        process.setWorkingDirectory(m_dir->path());
        process.start(QStringLiteral("sh"),
                      {QStringLiteral("-c"), command + QStringLiteral(" a.zip")});
        process.waitForFinished();
        return QString::fromUtf8(process.readAllStandardOutput())
            .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    FileHandle m_file;
};

KODMS_TEST_MAIN(ZipWriterTest, QCoreApplication)
#include "ZipWriterTest.moc"
