// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/FsPath.h"
#include "tests/filestore/support/StoreTestMain.h"
#include "tests/support/HasFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>
#include <thread>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// What every kind of file store promises.
class FileStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_source = m_dir->filePath(QStringLiteral("source.tgz"));
        m_target = m_dir->filePath(QStringLiteral("target.tgz"));
        QVERIFY(writeBytes(m_source, m_content));
        m_place = std::make_unique<StoreUnderTest>();
        m_store = opened();
        QVERIFY(m_store);
    }

    void cleanup()
    {
        m_store.reset();
        m_place.reset();
    }

    void whatIsPutCanBeGot()
    {
        put(QStringLiteral("a.tgz"));
        QVERIFY(hasFile(*m_store, QStringLiteral("a.tgz")));
        QVERIFY(m_store->get(QStringLiteral("a.tgz"), m_target, m_progress));
        QCOMPARE(bytesOf(m_target), m_content);
        QVERIFY(QFileInfo(m_target).isWritable());
    }

    void sizeAndDigestAreRecorded()
    {
        put(QStringLiteral("a.tgz"));
        const auto info = m_store->find(QStringLiteral("a.tgz"));
        QVERIFY(info);
        QCOMPARE(info.value.size, qint64{m_content.size()});
        QCOMPARE(info.value.sha256,
                 QCryptographicHash::hash(m_content, QCryptographicHash::Sha256).toHex());
    }

    void anEmptyFileIsAFile()
    {
        QVERIFY(writeBytes(m_source, QByteArray()));
        put(QStringLiteral("empty"));
        QVERIFY(m_store->get(QStringLiteral("empty"), m_target, m_progress));
        QCOMPARE(QFileInfo(m_target).size(), qint64{0});
        QVERIFY(QFileInfo::exists(m_target));
    }

    void aFileLargerThanTheBuffer()
    {
        QByteArray large;
        for (int i = 0; large.size() < 5 * 1024 * 1024 + 17; ++i)
            large += QByteArray::number(i);
        QVERIFY(writeBytes(m_source, large));
        put(QStringLiteral("large"));
        QVERIFY(m_store->verify(QStringLiteral("large"), m_progress));
        QVERIFY(m_store->get(QStringLiteral("large"), m_target, m_progress));
        QVERIFY(bytesOf(m_target) == large);
    }

    void aSecondPutUnderTheSameNameIsRefused()
    {
        put(QStringLiteral("a.tgz"));
        QVERIFY(writeBytes(m_source, "other"));
        const Outcome again = m_store->put(m_source, QStringLiteral("a.tgz"), m_progress);
        QVERIFY(!again);
        QVERIFY(again.text.contains(QStringLiteral("a.tgz")));
        QVERIFY(m_store->get(QStringLiteral("a.tgz"), m_target, m_progress));
        QCOMPARE(bytesOf(m_target), m_content);
        noRemains();
    }

    /// Many at once for one name: one wins, and what it put is what is there.
    void racingPutsOfOneName()
    {
        constexpr int Writers = 8;
        std::vector<std::thread> threads;
        std::array<bool, Writers> done{};
        for (int i = 0; i < Writers; ++i)
            QVERIFY(writeBytes(m_source + QString::number(i), QByteArray::number(i)));
        for (int i = 0; i < Writers; ++i)
            threads.emplace_back([this, i, &done] {
                const auto store = opened();
                NoProgress progress;
                done[static_cast<std::size_t>(i)] = bool(
                    store->put(m_source + QString::number(i), QStringLiteral("race"), progress));
            });
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(std::count(done.begin(), done.end(), true), std::ptrdiff_t{1});
        QVERIFY(m_store->get(QStringLiteral("race"), m_target, m_progress));
        const auto winner = std::find(done.begin(), done.end(), true) - done.begin();
        QCOMPARE(bytesOf(m_target), QByteArray::number(static_cast<int>(winner)));
        noRemains();
    }

    void names_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("valid");
        const auto row = [](const char *title, const QString &name, bool valid) {
            QTest::newRow(title) << name << valid;
        };
        row("a GUID with suffix", QStringLiteral("0123456789abcdef0123456789abcdef.tgz"), true);
        row("one letter", QStringLiteral("a"), true);
        row("all kinds of characters", QStringLiteral("A-z_0.9"), true);
        row("200 characters", QString(200, QLatin1Char('n')), true);
        row("201 characters", QString(201, QLatin1Char('n')), false);
        row("empty", QString(), false);
        row("a leading dot", QStringLiteral(".hidden"), false);
        row("this folder", QStringLiteral("."), false);
        row("the folder above", QStringLiteral(".."), false);
        row("a way out", QStringLiteral("../../etc/passwd"), false);
        row("an absolute path", QStringLiteral("/etc/passwd"), false);
        row("a backslash", QStringLiteral("a\\b"), false);
        row("a drive", QStringLiteral("C:a"), false);
        row("a blank", QStringLiteral("a b"), false);
        row("a line break", QStringLiteral("a\n"), false);
        row("a NUL", QStringLiteral("a") + QChar(0) + QStringLiteral("b"), false);
        row("Chinese", QStringLiteral("料号"), false);
        row("a wide letter", QStringLiteral("\uff41"), false);
        row("the sign of the trash", QStringLiteral("a@b"), false);
    }

    void names()
    {
        QFETCH(QString, name);
        QFETCH(bool, valid);
        QCOMPARE(FileStore::isValidStoredName(name), valid);
        QCOMPARE(bool(m_store->put(m_source, name, m_progress)), valid);
        QCOMPARE(hasFile(*m_store, name), valid);
        QCOMPARE(bool(m_store->get(name, m_target, m_progress)), valid);
        QCOMPARE(bool(m_store->remove(name)), valid);
        QVERIFY(!hasFile(*m_store, name));
        noRemains();
    }

    void placesAreNamedByTheSameRule()
    {
        FileStoreSettings settings = m_place->settings();
        settings.database = QStringLiteral("../x");
        QVERIFY(!FileStore::create(settings));
        settings = m_place->settings();
        settings.bucket.clear();
        QVERIFY(!FileStore::create(settings));
    }

    void settingsNameTheStore()
    {
        put(QStringLiteral("a"));
        FileStoreSettings settings = m_place->settings();
        const auto store = FileStore::create(settings);
        QVERIFY(store);
        QVERIFY(hasFile(*store.value, QStringLiteral("a")));
        QVERIFY(store.value->placeText().contains(settings.database));
        QVERIFY(store.value->placeText().contains(settings.bucket));
        settings.kind = QStringLiteral("floppy");
        QVERIFY(FileStore::create(settings).text().contains(settings.kind));
    }

    void databaseAndBucketAreApart()
    {
        put(QStringLiteral("a"));
        const auto other = m_place->opened(QStringLiteral("other"));
        QVERIFY(!hasFile(*other, QStringLiteral("a")));
    }

    void removedIsGone()
    {
        put(QStringLiteral("a"));
        QVERIFY(m_store->remove(QStringLiteral("a")));
        QVERIFY(!hasFile(*m_store, QStringLiteral("a")));
        QVERIFY(!m_store->get(QStringLiteral("a"), m_target, m_progress));
        QVERIFY(!m_store->remove(QStringLiteral("a")));
        put(QStringLiteral("a"));
        QVERIFY(hasFile(*m_store, QStringLiteral("a")));
        noRemains();
    }

    /// Two programs that bring one deletion to its end both succeed.
    void removedByWhomever()
    {
        put(QStringLiteral("a"));
        QVERIFY(m_store->has(QStringLiteral("a")).value);
        QVERIFY(m_store->removeIfThere(QStringLiteral("a")));
        const auto isThere = m_store->has(QStringLiteral("a"));
        QVERIFY(isThere && !isThere.value);
        QVERIFY(opened()->removeIfThere(QStringLiteral("a")));
        QVERIFY(m_store->removeIfThere(QStringLiteral("../a")));
    }

    void theListIsCompleteAndInOrder()
    {
        QStringList names;
        for (int i = 0; i < 50; ++i)
            names << QStringLiteral("f%1").arg(i);
        for (const QString &name : names)
            put(name);
        names.sort();
        const auto list = m_store->list();
        QVERIFY(list);
        QStringList listed;
        for (const StoredFileInfo &info : list.value)
            listed << info.name;
        QCOMPARE(listed, names);
    }

    void anEmptyStoreListsNothing()
    {
        const auto list = m_store->list();
        QVERIFY(list);
        QVERIFY(list.value.isEmpty());
        QVERIFY(m_place->isUntouched());
    }

    void gotFilesShareNoInodeWithTheStore()
    {
        put(QStringLiteral("a"));
        QVERIFY(m_store->get(QStringLiteral("a"), m_target, m_progress));
        QVERIFY(writeBytes(m_target, "scribbled over"));
        QVERIFY(m_store->verify(QStringLiteral("a"), m_progress));
        QCOMPARE(std::filesystem::hard_link_count(fsPath(m_target)), std::uintmax_t{1});
    }

    void whatStandsAtTheDestinationIsReplaced()
    {
        put(QStringLiteral("a"));
        QVERIFY(writeBytes(m_target, QByteArray(100000, 'x')));
        QVERIFY(m_store->get(QStringLiteral("a"), m_target, m_progress));
        QCOMPARE(bytesOf(m_target), m_content);
    }

    void aLinkAtTheDestinationIsRemovedNotFollowed()
    {
        put(QStringLiteral("a"));
        const QString precious = m_dir->filePath(QStringLiteral("precious"));
        QVERIFY(writeBytes(precious, "precious"));
        QVERIFY(QFile::link(precious, m_target));
        QVERIFY(m_store->get(QStringLiteral("a"), m_target, m_progress));
        QCOMPARE(bytesOf(precious), QByteArray("precious"));
        QVERIFY(!QFileInfo(m_target).isSymLink());
    }

    void aFolderAtTheDestinationIsKept()
    {
        put(QStringLiteral("a"));
        QVERIFY(QDir().mkpath(m_target + QStringLiteral("/inside")));
        const Outcome got = m_store->get(QStringLiteral("a"), m_target, m_progress);
        QVERIFY(!got);
        QVERIFY(got.text.contains(m_target));
        QVERIFY(QFileInfo(m_target + QStringLiteral("/inside")).isDir());
    }

    /// A failed fetch must not leave an older file that looks like a fetched one.
    void aFailedGetLeavesNothingAtTheDestination()
    {
        QVERIFY(writeBytes(m_target, "older"));
        QVERIFY(!m_store->get(QStringLiteral("missing"), m_target, m_progress));
        QVERIFY(!QFileInfo::exists(m_target));
    }

    void aHoldKeepsRemovedFilesReadable()
    {
        put(QStringLiteral("kept"));
        put(QStringLiteral("removed"));
        auto hold = m_store->hold();
        QVERIFY(hold);
        QVERIFY(opened()->remove(QStringLiteral("removed")));
        QVERIFY(!hasFile(*m_store, QStringLiteral("removed")));
        for (const QString &name : {QStringLiteral("kept"), QStringLiteral("removed")}) {
            QCOMPARE(hold.value->find(name).value.size, qint64{m_content.size()});
            QCOMPARE(readThrough(*hold.value, name), m_content);
        }
        QVERIFY(!hold.value->find(QStringLiteral("never")));
        hold.value.reset();
        noRemains();
    }

    void twoHoldsTheLastOneEmptiesTheTrash()
    {
        put(QStringLiteral("a"));
        auto first = m_store->hold();
        auto second = m_store->hold();
        QVERIFY(m_store->remove(QStringLiteral("a")));
        first.value.reset();
        QCOMPARE(readThrough(*second.value, QStringLiteral("a")), m_content);
        second.value.reset();
        noRemains();
    }

private:
    std::unique_ptr<FileStore> opened() { return m_place->opened(); }

    void put(const QString &name)
    {
        const Outcome done = m_store->put(m_source, name, m_progress);
        QVERIFY2(done, qPrintable(done.cause));
    }

    QByteArray readThrough(const StoreHold &hold, const QString &name)
    {
        QByteArray bytes;
        const Outcome done = hold.read(
            name,
            [&bytes](const char *data, qint64 size) {
                bytes.append(data, static_cast<int>(size));
                return Outcome::success();
            },
            m_progress);
        return done ? bytes : QByteArray("failed");
    }

    /// Only whole stored files and the locks of the living are on the disk.
    void noRemains()
    {
        const auto leftovers = m_store->leftovers();
        QVERIFY(leftovers);
        QCOMPARE(leftovers.value, QStringList());
        QCOMPARE(m_place->strayFiles(), QStringList());
    }

    const QByteArray m_content = QByteArray("job ") + QByteArray(3000, 'k');
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<StoreUnderTest> m_place;
    QString m_source;
    QString m_target;
    std::unique_ptr<FileStore> m_store;
    NoProgress m_progress;
};

KODMS_STORE_TEST_MAIN(FileStoreTest)
#include "FileStoreTest.moc"
