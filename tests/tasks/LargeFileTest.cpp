// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/Unpacker.h"
#include "services/filestore/FolderStore.h"
#include "services/tasks/TaskRunner.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/SampleArchives.h"
#include "tests/support/TestMain.h"
#include "tests/tasks/support/PeakMemory.h"
#include "tests/tasks/support/RepaintClock.h"
#include "tests/tasks/support/TaskSteps.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// What is done with 2 GiB, by the real file store and the real unpacker.
enum class Work { Fetch, Verify, Unpack };

Q_DECLARE_METATYPE(Work)

/// Large files in front of a window.
class LargeFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void memoryStaysSmallAndTheWindowAlive_data() { addWorks(); }

    void memoryStaysSmallAndTheWindowAlive();

    void cancelActsAtOnceAndLeavesNothing_data() { addWorks(); }

    void cancelActsAtOnceAndLeavesNothing();

private:
    static constexpr qint64 Size = qint64{2} << 30;
    static constexpr qint64 Allowance = qint64{64} << 20;
    static constexpr qint64 MostCancelMs = 200;

    static void addWorks();
    bool makeStored();
    bool makePacked() const;
    void clear() const;
    Outcome perform(Work work, Progress &progress) const;
    QStringList entries() const;

    QString packed() const { return m_dir.filePath(QStringLiteral("packed.tgz")); }

    QString fetched() const { return m_dir.filePath(QStringLiteral("fetched.tgz")); }

    QString unpacked() const { return m_dir.filePath(QStringLiteral("unpacked")); }

    QTemporaryDir m_dir;
    std::unique_ptr<FileStore> m_store;
    std::unique_ptr<RepaintClock> m_window;
};

void LargeFileTest::addWorks()
{
    QTest::addColumn<Work>("work");
    QTest::newRow("fetched") << Work::Fetch;
    QTest::newRow("verified") << Work::Verify;
    QTest::newRow("unpacked") << Work::Unpack;
}

void LargeFileTest::initTestCase()
{
    QVERIFY(makeStored());
    QVERIFY(makePacked());
    m_window = std::make_unique<RepaintClock>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

/// All of it zeros, and with holes: what is measured is not the disk.
bool LargeFileTest::makeStored()
{
    auto store = FolderStore::open(m_dir.filePath(QStringLiteral("store")), QStringLiteral("kodms"),
                                   QStringLiteral("files"));
    if (!store)
        return false;
    m_store = std::move(store.value);
    QFile file(m_dir.filePath(QStringLiteral("sent.tgz")));
    if (!file.open(QIODevice::WriteOnly) || !file.resize(Size))
        return false;
    NoProgress progress;
    return m_store->put(file.fileName(), QStringLiteral("large.tgz"), progress) && file.remove();
}

/// One file of zeros, packed in pieces, since no array of bytes holds the whole.
bool LargeFileTest::makePacked() const
{
    constexpr qint64 Piece = qint64{64} << 20;
    const QByteArray size = QByteArray::number(Size, 8).rightJustified(11, '0');
    const QByteArray tar = rawTar({{"job/features", {}, '0', {}, size}});
    const QByteArray piece = gzipped(QByteArray(int{Piece}, '\0'));
    return writeFile(packed(), gzipped(tar.left(512)) + piece.repeated(int{Size / Piece}) +
                                   gzipped(tar.mid(512)));
}

void LargeFileTest::init()
{
    clear();
    QTRY_VERIFY(!TaskRunner::instance().isBusy());
}

void LargeFileTest::clear() const
{
    QFile::remove(fetched());
    QDir(unpacked()).removeRecursively();
}

Outcome LargeFileTest::perform(Work work, Progress &progress) const
{
    LimitSettings limits;
    limits.archiveRatio = 10000; // zeros swell like nothing else
    switch (work) {
    case Work::Fetch:
        return m_store->get(QStringLiteral("large.tgz"), fetched(), progress);
    case Work::Verify:
        return m_store->verify(QStringLiteral("large.tgz"), progress);
    case Work::Unpack:
        break;
    }
    return unpackArchive(packed(), unpacked(), limits, progress).outcome;
}

QStringList LargeFileTest::entries() const
{
    return QDir(m_dir.path()).entryList(QDir::AllEntries | QDir::Hidden);
}

void LargeFileTest::memoryStaysSmallAndTheWindowAlive()
{
    QFETCH(Work, work);
    const PeakMemory memory;
    if (!memory.isKnown())
        QSKIP("this system does not tell the peak of memory");
    QElapsedTimer timer;
    timer.start();
    m_window->start();
    const Outcome outcome = TaskRunner::instance().run(
        QStringLiteral("large.tgz"), [&](Progress &progress) { return perform(work, progress); });
    QVERIFY2(outcome, qPrintable(outcome.text));
    qInfo("%lld ms, %lld KiB above idle, %s", static_cast<long long>(timer.elapsed()),
          static_cast<long long>(memory.aboveStart() >> 10), qPrintable(m_window->text()));
    QVERIFY(memory.aboveStart() <= Allowance);
    QVERIFY(m_window->percentileMs(0.9) <= 50);
    QVERIFY(m_window->longestMs() <= 500); // a late painting is a busy machine's
    if (work == Work::Fetch)
        QCOMPARE(QFileInfo(fetched()).size(), Size);
    if (work == Work::Unpack)
        QCOMPARE(QFileInfo(unpacked() + QStringLiteral("/job/features")).size(), Size);
}

void LargeFileTest::cancelActsAtOnceAndLeavesNothing()
{
    QFETCH(Work, work);
    const QStringList before = entries();
    QElapsedTimer sinceCancel;
    later(600, [&] {
        sinceCancel.start();
        pressCancel();
    });
    const Outcome outcome =
        TaskRunner::instance().run(QStringLiteral("large.tgz"), [&](Progress &progress) {
            Outcome done = Outcome::success();
            while (done && !progress.isCancelled()) { // a fast disk is through before the press
                clear();
                done = perform(work, progress);
            }
            return done;
        });
    const qint64 waited = sinceCancel.elapsed();
    QVERIFY(outcome.isCancelled);
    qInfo("cancelled within %lld ms", static_cast<long long>(waited));
    QVERIFY2(waited <= MostCancelMs, qPrintable(QString::number(waited)));
    QTRY_COMPARE_WITH_TIMEOUT(entries(), before, 30000); // what was written goes aside
}

KODMS_TEST_MAIN(LargeFileTest, QApplication)
#include "LargeFileTest.moc"
