// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/FolderStore.h"
#include "tests/support/TestMain.h"
#include "tests/support/WithoutPrivilege.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QProcess>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace KODMS::Services;

namespace {

/// Runs something once the first piece has been copied; or cancels.
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

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QStringList filesBelow(const QString &folder)
{
    QStringList found;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        found << it.next();
    return found;
}

} // namespace

class FolderStoreFailuresTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_source = m_dir->filePath(QStringLiteral("source"));
        m_target = m_dir->filePath(QStringLiteral("got/target"));
        QVERIFY(QDir().mkpath(m_dir->filePath(QStringLiteral("got"))));
        QVERIFY(writeFile(m_source, QByteArray(3 * 1024 * 1024, 's')));
        m_store = opened();
    }

    void cleanup() { m_store.reset(); }

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
        QCOMPARE(::mkfifo(pipe.toUtf8().constData(), 0600), 0);
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
        QVERIFY(writeFile(m_dir->filePath(QStringLiteral("root/db")), "in the way"));
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
        const KODMS::Tests::WithoutPrivilege ordinary;
        if (!ordinary.isBound())
            QSKIP("the account keeps its power to write everywhere");
        const auto store = opened();
        QVERIFY(store && store->exists(m_name));
        QVERIFY(store->verify(m_name, m_progress));
        const Outcome put = store->put(m_source, QStringLiteral("other"), m_progress);
        QVERIFY(!put && !put.text.isEmpty());
        QVERIFY(!store->exists(QStringLiteral("other")));
        QVERIFY(!store->remove(m_name));
        QVERIFY(store->exists(m_name));
    }

    void theRemainsOfAKilledWriterAreSweptAtTheNextOpening()
    {
        const pid_t child = ::fork();
        if (child == 0) {
            const auto store = opened();
            MeddlingProgress progress([] { ::_exit(9); });
            const Outcome never = store->put(m_source, m_name, progress);
            ::_exit(never ? 0 : 1);
        }
        int status = -1;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QCOMPARE(WEXITSTATUS(status), 9);
        QVERIFY(!filesBelow(m_dir->filePath(QStringLiteral("root"))).isEmpty());
        QCOMPARE(m_store->leftovers().value.size(), 1);
        const auto again = opened();
        QVERIFY(again->leftovers().value.isEmpty());
        nothingStored();
    }

    void theRemainsOfAKilledReaderAreSweptByTheNextGet()
    {
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        const pid_t child = ::fork();
        if (child == 0) {
            MeddlingProgress progress([] { ::_exit(9); });
            const Outcome never = m_store->get(m_name, m_target, progress);
            ::_exit(never ? 0 : 1);
        }
        int status = -1;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QCOMPARE(filesBelow(m_dir->filePath(QStringLiteral("got"))).size(), 1);
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

    void foreignFilesAreReportedAndLeftAlone()
    {
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        const QString place = m_dir->filePath(QStringLiteral("root/db/bucket/"));
        QVERIFY(writeFile(place + QStringLiteral("readme.txt"), "hello"));
        QVERIFY(writeFile(place + QStringLiteral("files/stray"), "hello"));
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
        QVERIFY(!m_store->exists(m_name));
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
