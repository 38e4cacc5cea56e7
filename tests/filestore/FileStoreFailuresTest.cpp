// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/filestore/support/MeddlingProgress.h"
#include "tests/filestore/support/StoreTestMain.h"
#include "tests/support/HasFile.h"
#include "tests/support/UnixTricks.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// What every kind of file store does when something goes wrong.
class FileStoreFailuresTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_source = m_dir->filePath(QStringLiteral("source"));
        m_target = m_dir->filePath(QStringLiteral("got/target"));
        QVERIFY(QDir().mkpath(m_dir->filePath(QStringLiteral("got"))));
        QVERIFY(writeBytes(m_source, QByteArray(3 * 1024 * 1024, 's')));
        m_place = std::make_unique<StoreUnderTest>();
        m_store = opened();
        QVERIFY(m_store);
    }

    void cleanup()
    {
        m_store.reset();
        m_place.reset();
    }

    void aMissingSource()
    {
        const Outcome put = m_store->put(m_source + QStringLiteral("-no"), m_name, m_progress);
        QVERIFY(!put);
        QVERIFY(put.text.contains(m_source + QStringLiteral("-no")));
        nothingStored();
    }

    void aFolderAsSource()
    {
        QVERIFY(!m_store->put(m_dir->path(), m_name, m_progress));
        nothingStored();
    }

    void aPipeAsSourceDoesNotHang()
    {
        const QString pipe = m_dir->filePath(QStringLiteral("pipe"));
        if (!makePipe(pipe))
            QSKIP("a folder cannot hold a pipe here");
        QVERIFY(!m_store->put(pipe, m_name, m_progress));
        nothingStored();
    }

    void aSourceThatGrowsWhileItIsRead()
    {
        MeddlingProgress progress([this] {
            QFile file(m_source);
            QVERIFY(file.open(QIODevice::Append));
            file.write("more");
        });
        const Outcome put = m_store->put(m_source, m_name, progress);
        QVERIFY(!put);
        QVERIFY(put.text.contains(m_source));
        nothingStored();
    }

    void aSourceThatShrinksWhileItIsRead()
    {
        MeddlingProgress progress([this] { QVERIFY(QFile::resize(m_source, 10)); });
        QVERIFY(!m_store->put(m_source, m_name, progress));
        nothingStored();
    }

    void aSourceRemovedWhileItIsReadIsStillWhole()
    {
        MeddlingProgress progress([this] { QVERIFY(QFile::remove(m_source)); });
        QVERIFY(m_store->put(m_source, m_name, progress));
        QVERIFY(m_store->verify(m_name, m_progress));
    }

    void aCancelledPut()
    {
        MeddlingProgress progress([&progress] { progress.cancelled = true; });
        QVERIFY(!m_store->put(m_source, m_name, progress));
        nothingStored();
    }

    void aCancelledGet()
    {
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        MeddlingProgress progress([&progress] { progress.cancelled = true; });
        QVERIFY(!m_store->get(m_name, m_target, progress));
        nothingGot();
    }

    void aGetIntoAMissingFolder()
    {
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        QVERIFY(!m_store->get(m_name, m_dir->filePath(QStringLiteral("no/target")), m_progress));
    }

    void theRemainsOfAKilledReaderAreSweptByTheNextGet()
    {
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        m_store.reset(); // a connection is not to be shared with a child
        const auto ended = exitCodeOfCopy([this] {
            const auto store = opened();
            MeddlingProgress progress([] { endAtOnce(9); });
            return store->get(m_name, m_target, progress) ? 0 : 1;
        });
        if (!ended)
            QSKIP("a process cannot be copied here");
        QCOMPARE(filesBelow(m_dir->filePath(QStringLiteral("got"))).size(), 1);
        m_store = opened();
        QVERIFY(m_store->get(m_name, m_target, m_progress));
        QCOMPARE(filesBelow(m_dir->filePath(QStringLiteral("got"))), QStringList(m_target));
    }

    /// Between the put and its record a program may die.
    void thePutterIsKnownToLiveOrNot()
    {
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        const auto other = opened();
        QVERIFY(other->isPutterAlive(m_name));
        m_store.reset();
        QVERIFY(!other->isPutterAlive(m_name));
        QVERIFY(!other->isPutterAlive(QStringLiteral("never")));
    }

    void aLivingWriterIsNotSwept()
    {
        MeddlingProgress progress([this] {
            const auto other = opened();
            QVERIFY(other->sweep());
            QVERIFY(other->leftovers().value.isEmpty());
        });
        QVERIFY(m_store->put(m_source, m_name, progress));
        QVERIFY(m_store->verify(m_name, m_progress));
    }

private:
    std::unique_ptr<FileStore> opened() { return m_place->opened(); }

    /// What a person has cancelled may be cleared away a little later.
    void nothingStored()
    {
        QVERIFY(!hasFile(*m_store, m_name));
        QTRY_COMPARE_WITH_TIMEOUT(m_place->strayFiles(), QStringList(), 20000);
        QTRY_COMPARE_WITH_TIMEOUT(m_store->leftovers().value, QStringList(), 20000);
    }

    void nothingGot()
    {
        QCOMPARE(filesBelow(m_dir->filePath(QStringLiteral("got"))), QStringList());
    }

    const QString m_name = QStringLiteral("stored.tgz");
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<StoreUnderTest> m_place;
    QString m_source;
    QString m_target;
    std::unique_ptr<FileStore> m_store;
    NoProgress m_progress;
};

KODMS_STORE_TEST_MAIN(FileStoreFailuresTest)
#include "FileStoreFailuresTest.moc"
