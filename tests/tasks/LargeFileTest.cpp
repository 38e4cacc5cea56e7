// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/FolderStore.h"
#include "services/tasks/TaskRunner.h"
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

/// A file of 2 GiB through the real file store, in front of a window.
class LargeFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void memoryStaysSmallAndTheWindowAlive_data();
    void memoryStaysSmallAndTheWindowAlive();
    void cancelActsAtOnceAndLeavesNothing();

private:
    static constexpr qint64 Size = qint64{2} << 30;
    static constexpr qint64 Allowance = qint64{64} << 20;

    QString target() const { return m_dir.filePath(QStringLiteral("fetched.tgz")); }

    QTemporaryDir m_dir;
    std::unique_ptr<FileStore> m_store;
    std::unique_ptr<RepaintClock> m_window;
};

/// All of it zeros, and with holes: what is measured is not the disk.
void LargeFileTest::initTestCase()
{
    auto store = FolderStore::open(m_dir.filePath(QStringLiteral("store")), QStringLiteral("kodms"),
                                   QStringLiteral("files"));
    QVERIFY2(store, qPrintable(store.text()));
    m_store = std::move(store.value);
    QFile file(m_dir.filePath(QStringLiteral("sent.tgz")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(Size));
    NoProgress progress;
    const Outcome put = m_store->put(file.fileName(), QStringLiteral("large.tgz"), progress);
    QVERIFY2(put, qPrintable(put.text));
    QVERIFY(file.remove());
    m_window = std::make_unique<RepaintClock>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void LargeFileTest::init()
{
    QFile::remove(target());
    QTRY_VERIFY(!TaskRunner::instance().isBusy());
}

void LargeFileTest::memoryStaysSmallAndTheWindowAlive_data()
{
    QTest::addColumn<bool>("isFetch");
    QTest::newRow("fetched") << true;
    QTest::newRow("verified") << false;
}

void LargeFileTest::memoryStaysSmallAndTheWindowAlive()
{
    QFETCH(bool, isFetch);
    const PeakMemory memory;
    if (!memory.isKnown())
        QSKIP("this system does not tell the peak of memory");
    QElapsedTimer timer;
    timer.start();
    m_window->start();
    const Outcome outcome =
        TaskRunner::instance().run(QStringLiteral("large.tgz"), [&](Progress &progress) {
            return isFetch ? m_store->get(QStringLiteral("large.tgz"), target(), progress)
                           : m_store->verify(QStringLiteral("large.tgz"), progress);
        });
    QVERIFY2(outcome, qPrintable(outcome.text));
    qInfo("%lld ms, %lld KiB above idle, %s", static_cast<long long>(timer.elapsed()),
          static_cast<long long>(memory.aboveStart() >> 10), qPrintable(m_window->text()));
    QVERIFY(memory.aboveStart() <= Allowance);
    QVERIFY(m_window->percentileMs(0.9) <= 50);
    QVERIFY(m_window->longestMs() <= 500); // a late painting is a busy machine's
    if (isFetch)
        QCOMPARE(QFileInfo(target()).size(), Size);
}

void LargeFileTest::cancelActsAtOnceAndLeavesNothing()
{
    const QStringList before = QDir(m_dir.path()).entryList(QDir::AllEntries | QDir::Hidden);
    QElapsedTimer sinceCancel;
    later(600, [&] {
        sinceCancel.start();
        pressCancel();
    });
    const Outcome outcome =
        TaskRunner::instance().run(QStringLiteral("large.tgz"), [&](Progress &progress) {
            Outcome done = Outcome::success();
            while (done && !progress.isCancelled()) // a fast disk is through before the press
                done = m_store->get(QStringLiteral("large.tgz"), target(), progress);
            return done;
        });
    const qint64 waited = sinceCancel.elapsed();
    QVERIFY(outcome.isCancelled);
    qInfo("cancelled within %lld ms", static_cast<long long>(waited));
    QVERIFY2(waited <= 400, qPrintable(QString::number(waited)));
    QTRY_COMPARE(QDir(m_dir.path()).entryList(QDir::AllEntries | QDir::Hidden), before);
}

KODMS_TEST_MAIN(LargeFileTest, QApplication)
#include "LargeFileTest.moc"
