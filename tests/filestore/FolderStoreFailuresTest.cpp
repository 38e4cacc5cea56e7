// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/FolderStore.h"
#include "tests/filestore/support/MeddlingProgress.h"
#include "tests/filestore/support/StoreUnderTest.h"
#include "tests/support/HasFile.h"
#include "tests/support/TestMain.h"
#include "tests/support/UnixTricks.h"
#include "tests/support/WithoutPrivilege.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

class FolderStoreFailuresTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_source = m_dir->filePath(QStringLiteral("source"));
        m_target = m_dir->filePath(QStringLiteral("got/target"));
        QVERIFY(QDir().mkpath(m_dir->filePath(QStringLiteral("got"))));
        QVERIFY(writeBytes(m_source, QByteArray(3 * 1024 * 1024, 's')));
        m_store = opened();
    }

    void cleanup() { m_store.reset(); }

    void damage_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("a flipped bit") << 0;
        QTest::newRow("cut short") << 1;
        QTest::newRow("grown") << 2;
        QTest::newRow("the body is gone") << 3;
        QTest::newRow("a second body") << 4;
        QTest::newRow("a body without sums") << 5;
    }

    void damage()
    {
        QFETCH(int, kind);
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        harm(kind);
        QVERIFY(!m_store->verify(m_name, m_progress));
        const Outcome got = m_store->get(m_name, m_target, m_progress);
        QVERIFY(!got);
        QVERIFY(got.text.contains(m_name));
        nothingGot();
    }

    void aRootThatIsAFile()
    {
        QVERIFY(!FolderStore::open(m_source, QStringLiteral("db"), QStringLiteral("bucket")));
    }

    void aStoreWhoseFolderIsAFile()
    {
        QVERIFY(QDir().mkpath(m_dir->filePath(QStringLiteral("root"))));
        QVERIFY(writeBytes(m_dir->filePath(QStringLiteral("root/db")), "in the way"));
        const Outcome put = m_store->put(m_source, m_name, m_progress);
        QVERIFY(!put);
        QVERIFY(!put.text.isEmpty());
    }

    void aReadOnlyStore()
    {
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        m_store.reset();
        letWrite(false);
        const auto writable = qScopeGuard([this] { letWrite(true); });
        const WithoutPrivilege ordinary;
        if (!ordinary.isBound())
            QSKIP("the account keeps its power to write everywhere");
        const auto store = opened();
        QVERIFY(store && hasFile(*store, m_name));
        QVERIFY(store->verify(m_name, m_progress));
        const Outcome put = store->put(m_source, QStringLiteral("other"), m_progress);
        QVERIFY(!put && !put.text.isEmpty());
        QVERIFY(!hasFile(*store, QStringLiteral("other")));
        QVERIFY(!store->remove(m_name));
        QVERIFY(hasFile(*store, m_name));
    }

    void theRemainsOfAKilledWriterAreSweptAtTheNextOpening()
    {
        const auto ended = exitCodeOfCopy([this] {
            const auto store = opened();
            MeddlingProgress progress([] { endAtOnce(9); });
            return store->put(m_source, m_name, progress) ? 0 : 1;
        });
        if (!ended)
            QSKIP("a process cannot be copied here");
        QCOMPARE(*ended, 9);
        QVERIFY(!filesBelow(m_dir->filePath(QStringLiteral("root"))).isEmpty());
        QCOMPARE(m_store->leftovers().value.size(), 1);
        const auto again = opened();
        QVERIFY(again->leftovers().value.isEmpty());
        nothingStored();
    }

    void foreignFilesAreReportedAndLeftAlone()
    {
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        const QString place = m_dir->filePath(QStringLiteral("root/db/bucket/"));
        QVERIFY(writeBytes(place + QStringLiteral("readme.txt"), "hello"));
        QVERIFY(writeBytes(place + QStringLiteral("files/stray"), "hello"));
        QVERIFY(QDir().mkpath(place + QStringLiteral("files/000/misplaced")));
        QVERIFY(m_store->sweep());
        QCOMPARE(m_store->leftovers().value,
                 QStringList({QStringLiteral("files/000/misplaced"), QStringLiteral("files/stray"),
                              QStringLiteral("readme.txt")}));
    }

private:
    std::unique_ptr<FileStore> opened()
    {
        auto store = FolderStore::open(m_dir->filePath(QStringLiteral("root")),
                                       QStringLiteral("db"), QStringLiteral("bucket"));
        return std::move(store.value);
    }

    QString bodyPath()
    {
        const auto files = filesBelow(m_dir->filePath(QStringLiteral("root/db/bucket/files")));
        return files.value(0);
    }

    void harm(int kind)
    {
        const QString body = bodyPath();
        QVERIFY(QFile::setPermissions(body, QFile::ReadOwner | QFile::WriteOwner));
        QFile file(body);
        QVERIFY(file.open(QIODevice::ReadWrite));
        if (kind == 0) {
            QVERIFY(file.seek(2000000));
            file.write("t");
        } else if (kind == 1) {
            QVERIFY(file.resize(file.size() - 1));
        } else if (kind == 2) {
            QVERIFY(file.seek(file.size()));
            file.write("s");
        } else if (kind == 3) {
            QVERIFY(file.remove());
        } else if (kind == 4) {
            QVERIFY(file.copy(body + QStringLiteral("1")));
        } else {
            QVERIFY(file.rename(QFileInfo(body).dir().filePath(QStringLiteral("body"))));
        }
    }

    /// Exit code of the checks that a user without rights makes.
    /// Into the store's folder and those in it.
    void letWrite(bool allowed) const
    {
        const QFile::Permissions read = QFile::ReadOwner | QFile::ExeOwner;
        const QString root = m_dir->filePath(QStringLiteral("root"));
        QStringList folders{root};
        QDirIterator it(root, QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden,
                        QDirIterator::Subdirectories);
        while (it.hasNext())
            folders.append(it.next());
        for (const QString &folder : qAsConst(folders))
            QVERIFY(QFile::setPermissions(folder, allowed ? read | QFile::WriteOwner : read));
    }

    void nothingStored()
    {
        QVERIFY(!hasFile(*m_store, m_name));
        for (const QString &file : filesBelow(m_dir->filePath(QStringLiteral("root"))))
            QVERIFY2(file.contains(QStringLiteral("/live/owner-")), qPrintable(file));
    }

    void nothingGot()
    {
        QCOMPARE(filesBelow(m_dir->filePath(QStringLiteral("got"))), QStringList());
    }

    const QString m_name = QStringLiteral("stored.tgz");
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_source;
    QString m_target;
    std::unique_ptr<FileStore> m_store;
    NoProgress m_progress;
};

KODMS_TEST_MAIN(FolderStoreFailuresTest, QCoreApplication)
#include "FolderStoreFailuresTest.moc"
