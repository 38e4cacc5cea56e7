// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/FolderPacker.h"
#include "services/archive/Unpacker.h"
#include "tests/archive/SampleArchives.h"
#include "tests/support/TestMain.h"
#include "tests/support/UnixTricks.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <sys/stat.h>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

class MeddlingProgress final : public Progress {
public:
    explicit MeddlingProgress(std::function<void()> meddle) : m_meddle(std::move(meddle)) {}

    void setTotal(qint64) override {}

    void advance(qint64) override
    {
        if (auto meddle = std::exchange(m_meddle, {}))
            meddle();
    }

    bool isCancelled() const override { return cancelled; }

    bool cancelled = false;

private:
    std::function<void()> m_meddle;
};

} // namespace

class FolderPackerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_folder = m_dir->filePath(QStringLiteral("料号job"));
        m_zip = m_dir->filePath(QStringLiteral("out.zip"));
        QVERIFY(writeFile(m_folder + QStringLiteral("/matrix/matrix"), "STEP {\n}\n"));
        QVERIFY(writeFile(m_folder + QStringLiteral("/层/顶层.gbr"), QByteArray(700000, 'G')));
        QVERIFY(writeFile(m_folder + QStringLiteral("/empty"), ""));
        QVERIFY(QDir().mkpath(m_folder + QStringLiteral("/nothing inside")));
    }

    void whatIsPackedUnpacksToTheSame()
    {
        const auto packed = packFolder(m_folder, m_zip, m_limits, m_progress);
        QVERIFY2(packed, qPrintable(packed.text()));
        QCOMPARE(packed.value, qint64{3});
        const QString target = m_dir->filePath(QStringLiteral("target"));
        const auto unpacked = unpackArchive(m_zip, target, LimitSettings(), m_progress);
        QVERIFY2(unpacked, qPrintable(unpacked.text()));
        QCOMPARE(unpacked.value, qint64{3});
        QCOMPARE(treeOf(target + QStringLiteral("/料号job")), treeOf(m_folder));
    }

    void itReallyDeflates()
    {
        QVERIFY(packFolder(m_folder, m_zip, m_limits, m_progress));
        QVERIFY(QFileInfo(m_zip).size() < 10000);
    }

    void aFolderNamedWithATrailingSlash()
    {
        QVERIFY(packFolder(m_folder + QLatin1Char('/'), m_zip, m_limits, m_progress));
        const QString target = m_dir->filePath(QStringLiteral("target"));
        QVERIFY(unpackArchive(m_zip, target, LimitSettings(), m_progress));
        QVERIFY(QFileInfo(target + QStringLiteral("/料号job/matrix/matrix")).isFile());
    }

    void theSameFolderGivesTheSameBytes()
    {
        QVERIFY(packFolder(m_folder, m_zip, m_limits, m_progress));
        const QString again = m_dir->filePath(QStringLiteral("again.zip"));
        QTest::qSleep(1100);
        QVERIFY(packFolder(m_folder, again, m_limits, m_progress));
        QFile one(m_zip);
        QFile two(again);
        QVERIFY(one.open(QIODevice::ReadOnly) && two.open(QIODevice::ReadOnly));
        QVERIFY(one.readAll() == two.readAll());
    }

    void namesAreMarkedAsUtf8()
    {
        QVERIFY(packFolder(m_folder, m_zip, m_limits, m_progress));
        QFile zip(m_zip);
        QVERIFY(zip.open(QIODevice::ReadOnly));
        const QByteArray head = zip.read(8);
        QVERIFY((head.at(7) & 0x08) != 0);
    }

    void refused_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("named");
        QTest::newRow("a link") << QStringLiteral("ln -s /etc/passwd matrix/leak")
                                << QStringLiteral("matrix/leak");
        QTest::newRow("a dangling link")
            << QStringLiteral("ln -s nowhere a-link") << QStringLiteral("a-link");
        QTest::newRow("a pipe") << QStringLiteral("mkfifo a-pipe") << QStringLiteral("a-pipe");
        QTest::newRow("a name in no encoding")
            << QStringLiteral("touch \"$(printf 'a\\377b')\"") << QStringLiteral("料号job/a");
        QTest::newRow("names that differ in case")
            << QStringLiteral("touch Top.gbr top.GBR") << QStringLiteral("top.GBR");
        QTest::newRow("too deep") << QStringLiteral("mkdir -p $(printf 'd/%.0s' $(seq 200)); "
                                                    "touch $(printf 'd/%.0s' $(seq 200))x")
                                  << QStringLiteral("d/d");
        QTest::newRow("no files") << QStringLiteral("rm -r -- *; mkdir x")
                                  << QStringLiteral("料号job");
        QTest::newRow("no folder") << QStringLiteral("rm -r \"$PWD\"") << QStringLiteral("料号job");
    }

    void refused()
    {
        QFETCH(QString, command);
        QFETCH(QString, named);
        if (!runInShell(m_folder, command))
            QSKIP("there is no shell here");
        const auto packed = packFolder(m_folder, m_zip, m_limits, m_progress);
        QVERIFY(!packed);
        QVERIFY2(packed.text().contains(named), qPrintable(packed.text()));
        QVERIFY(!QFileInfo::exists(m_zip));
        // Qt cannot remove what it cannot name.
        QVERIFY(QDir().mkpath(m_folder));
        runInShell(m_folder, QStringLiteral("rm -rf -- *"));
    }

    /// What is packed must be fit to be unpacked under the same limits.
    void limits_data()
    {
        QTest::addColumn<qint64>("entries");
        QTest::addColumn<qint64>("bytes");
        QTest::addColumn<qint64>("ratio");
        QTest::addColumn<int>("zeros");
        QTest::newRow("an entry too many") << qint64{5} << qint64{1 << 30} << qint64{200} << 0;
        QTest::newRow("too many bytes") << qint64{100} << qint64{600000} << qint64{200} << 0;
        QTest::newRow("shrinks too much")
            << qint64{100} << qint64{1 << 30} << qint64{200} << (20 << 20);
    }

    void limits()
    {
        QFETCH(qint64, entries);
        QFETCH(qint64, bytes);
        QFETCH(qint64, ratio);
        QFETCH(int, zeros);
        QVERIFY(writeFile(m_folder + QStringLiteral("/zeros"), QByteArray(zeros, '\0')));
        QVERIFY(packFolder(m_folder, m_zip, {1000, 1 << 30, 10000}, m_progress));
        QVERIFY(QFile::remove(m_zip));
        QVERIFY(!packFolder(m_folder, m_zip, {entries, bytes, ratio}, m_progress));
        QVERIFY(!QFileInfo::exists(m_zip));
    }

    void aFileThatGrows()
    {
        const QString growing = m_folder + QStringLiteral("/层/顶层.gbr");
        MeddlingProgress progress([growing] {
            QFile file(growing);
            QVERIFY(file.open(QIODevice::Append));
            file.write("more");
        });
        const auto packed = packFolder(m_folder, m_zip, m_limits, progress);
        QVERIFY(!packed);
        QVERIFY(packed.text().contains(growing));
        QVERIFY(!QFileInfo::exists(m_zip));
    }

    void cancelled()
    {
        MeddlingProgress progress([&progress] { progress.cancelled = true; });
        QVERIFY(!packFolder(m_folder, m_zip, m_limits, progress));
        QVERIFY(!QFileInfo::exists(m_zip));
    }

    void aTargetThatStandsIsNotOverwritten()
    {
        QVERIFY(writeFile(m_zip, "mine"));
        QVERIFY(!packFolder(m_folder, m_zip, m_limits, m_progress));
        QFile zip(m_zip);
        QVERIFY(zip.open(QIODevice::ReadOnly));
        QCOMPARE(zip.readAll(), QByteArray("mine"));
    }

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_folder;
    QString m_zip;
    LimitSettings m_limits;
    NoProgress m_progress;
};

KODMS_TEST_MAIN(FolderPackerTest, QCoreApplication)
#include "FolderPackerTest.moc"
