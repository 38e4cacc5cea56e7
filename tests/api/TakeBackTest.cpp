// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/session/TakeBack.h"

#include "services/records/Guid.h"
#include "services/records/Transaction.h"
#include "services/records/bll/StoredFileRecords.h"
#include "tests/archive/SampleArchives.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/common/support/WatchedFileStore.h"
#include "tests/support/HasFile.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QScopeGuard>
#include <QSemaphore>
#include <QTest>
#include <QThread>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// A file whose recording has failed goes, and never one that is recorded after all.
class TakeBackTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void whatIsNotRecordedGoes();
    void whatIsRecordedStays();
    void whatIsBeingRecordedStays();
    void itStaysWhenTheRecordsAreBusy();
    void itStaysWhenTheRecordsAreAway();
    void othersWriteWhileItIsRemoved();

private:
    static void record(Database &database);

    void takeBack() { takeBackUnrecorded(m_home->runtime(), name()); }

    bool isStored() { return hasFile(m_home->store(), name()); }

    static QString name() { return QStringLiteral("a1b2c3_board.zip"); }

    std::unique_ptr<TestInstallation> m_home;
};

void TakeBackTest::init()
{
    m_home = std::make_unique<TestInstallation>();
    const QString file = m_home->path(QStringLiteral("board.zip"));
    QVERIFY(writeFile(file, "a board"));
    NoProgress progress;
    QVERIFY(m_home->store().put(file, name(), progress));
}

void TakeBackTest::cleanup()
{
    m_home.reset();
}

void TakeBackTest::record(Database &database)
{
    StoredFileRow row;
    row.guid = newGuid();
    row.baseName = QStringLiteral("board");
    row.storedName = name();
    StoredFileRecords(database).insert(row, 0, 1);
}

void TakeBackTest::whatIsNotRecordedGoes()
{
    takeBack();
    QVERIFY(!isStored());
    QVERIFY(!m_home->database().isInTransaction());
}

void TakeBackTest::whatIsRecordedStays()
{
    record(m_home->database());
    takeBack();
    QVERIFY(isStored());
}

/// As a server does it for a connection that is gone: the record comes to light while the
/// file is about to be taken back.
void TakeBackTest::whatIsBeingRecordedStays()
{
    if (!TestDatabase::isServer())
        QSKIP("an embedded database saves nothing once its connection is gone");
    QSemaphore begun;
    const auto settings = m_home->place().settings();
    const std::unique_ptr<QThread> other(QThread::create([&] {
        Database database(settings);
        const PlainConnection watcher(settings);
        Transaction transaction(database);
        record(database);
        begun.release();
        watcher.awaitWaitingWriter();
        transaction.commit();
    }));
    other->start();
    const auto ended = qScopeGuard([&] { other->wait(); });
    begun.acquire();
    takeBack();
    QVERIFY(isStored());
}

/// A server is asked as a writer, who waits for others and gives up. An embedded database is only
/// looked at, which no writer keeps anybody from: there is nothing to give up for.
void TakeBackTest::itStaysWhenTheRecordsAreBusy()
{
    Database other(m_home->place().settings());
    if (TestDatabase::isServer())
        m_home->database().run(QStringLiteral("SET lock_timeout = 50"));
    {
        const Transaction writer(other);
        takeBack();
        QCOMPARE(isStored(), TestDatabase::isServer());
    }
    takeBack();
    QVERIFY(!isStored());
}

void TakeBackTest::itStaysWhenTheRecordsAreAway()
{
    m_home->database().run(QStringLiteral("ALTER TABLE orig_files RENAME TO gone"));
    takeBack();
    QVERIFY(isStored());
    QVERIFY(!m_home->database().isInTransaction());
}

/// A store may take minutes to remove a large file.
void TakeBackTest::othersWriteWhileItIsRemoved()
{
    Database other(m_home->place().settings());
    int written = 0;
    const auto write = [&] {
        Transaction writer(other);
        other.run(QStringLiteral("UPDATE users SET post = 5"));
        writer.commit();
        ++written;
    };
    using Opened = Result<std::unique_ptr<FileStore>>;
    const auto open = [&](const FileStoreSettings &settings) -> Opened {
        Opened inner = FileStore::create(settings);
        if (!inner)
            return inner;
        return std::unique_ptr<FileStore>(new WatchedFileStore(std::move(inner.value), write));
    };
    const auto runtime = Runtime::open(m_home->iniPath(), open);
    QVERIFY2(runtime, qPrintable(runtime.text()));
    takeBackUnrecorded(*runtime.value, name());
    QVERIFY(!isStored());
    QCOMPARE(written, 1);
}

KODMS_TEST_MAIN(TakeBackTest, QCoreApplication)
#include "TakeBackTest.moc"
