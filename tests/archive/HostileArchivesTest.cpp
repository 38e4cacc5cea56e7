// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/ArchiveProbe.h"
#include "services/archive/Unpacker.h"
#include "tests/archive/HostileCorpus.h"
#include "tests/archive/RawRar.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/support/ProcessorTime.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// What must not happen, whatever a customer sends: a file outside the target, a
/// changed target, something left behind, a hang.
class HostileArchivesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void refused_data()
    {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<QString>("named");
        for (const HostileArchive &hostile : hostileArchives())
            QTest::newRow(hostile.title.constData()) << hostile.archive << hostile.named;
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
        const double start = processorTime();
        NoProgress progress;
        const auto unpacked = unpackArchive(file, target, limits, progress);
        const auto probed = probeArchive(file, limits, progress);
        const double seconds = processorTime() - start;
        m_slowest = qMax(m_slowest, seconds);
        QVERIFY2(seconds < MostSeconds, qPrintable(QString::number(seconds)));
        QVERIFY(!unpacked);
        QVERIFY(!probed);
        QVERIFY2(unpacked.text().contains(named), qPrintable(unpacked.text()));
        QCOMPARE(probed.text(), unpacked.text());
        QVERIFY(treeOf(dir.path()) == before);
    }

    /// The test above is worth as much as what it is fed.
    void thereAreSixtyKinds()
    {
        const auto corpus = hostileArchives();
        QSet<QByteArray> titles;
        QSet<QByteArray> contents;
        for (const HostileArchive &hostile : corpus) {
            titles.insert(hostile.title);
            contents.insert(hostile.archive);
        }
        qInfo("%d kinds of hostile archives, the slowest took %.3f s", corpus.size(), m_slowest);
        QVERIFY(corpus.size() >= 60);
        QCOMPARE(titles.size(), corpus.size());
        QCOMPARE(contents.size(), corpus.size());
    }

    /// What cannot be unpacked here, though nothing is wrong with it, is said so.
    void whatToSendInstead_data()
    {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<QString>("text");
        const QString open = QStringLiteral("请提供未加密的压缩包");
        const QString other = QStringLiteral("请提供 zip 或 tgz 压缩包");
        QTest::newRow("zip, encrypted") << rawZip({{"a", "1", false, true}}) << open;
        QTest::newRow("rar, encrypted") << rawRar4({{"a", "1"}}, 0, Rar4FileEncrypted) << open;
        QTest::newRow("rar, encrypted headers")
            << rawRar4({{"a", "1"}}, Rar4HeadersEncrypted) << open;
        QTest::newRow("rar of version 5, encrypted headers") << encryptedRar5() << open;
        QTest::newRow("rar, solid") << rawRar4({{"a", "1"}}, 0, Rar4FileSolid) << other;
    }

    void whatToSendInstead()
    {
        QFETCH(QByteArray, archive);
        QFETCH(QString, text);
        const QTemporaryDir dir;
        QVERIFY(writeFile(dir.filePath(QStringLiteral("sent")), archive));
        NoProgress progress;
        const auto unpacked =
            unpackArchive(dir.filePath(QStringLiteral("sent")),
                          dir.filePath(QStringLiteral("target")), LimitSettings(), progress);
        QVERIFY(!unpacked);
        QVERIFY2(unpacked.text().contains(text), qPrintable(unpacked.text()));
    }

private:
    /// What a hang is. Processor time, since other work may keep the machine busy.
    static constexpr double MostSeconds = 2;

    double m_slowest = 0;
};

KODMS_TEST_MAIN(HostileArchivesTest, QCoreApplication)
#include "HostileArchivesTest.moc"
