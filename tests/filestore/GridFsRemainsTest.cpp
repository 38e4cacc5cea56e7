// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/filestore/support/MeddlingProgress.h"
#include "tests/filestore/support/RawBucket.h"
#include "tests/filestore/support/StoreTestMain.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <cstdio>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

/// Long before any clock says now.
const QByteArray LongAgo = "{'$set': {'seen': {'$date': {'$numberLong': '1000000'}}}}";

QByteArray chunk(const QByteArray &id, const QByteArray &filesId, int n)
{
    return "{'_id': {'$oid': '" + id + "'}, 'files_id': {'$oid': '" + filesId +
           "'}, 'n': " + QByteArray::number(n) +
           ", 'data': {'$binary': {'base64': 'YQ==', 'subType': '00'}}}";
}

/// A put that tells that it has begun, and waits to be killed.
class EndlessProgress final : public Progress {
public:
    void setTotal(qint64) override {}

    void advance(qint64) override
    {
        std::puts("begun");
        std::fflush(stdout);
        for (;;)
            QThread::sleep(60);
    }

    bool isCancelled() const override { return false; }
};

} // namespace

/// What killed programs leave, and what is left of theirs afterwards.
class GridFsRemainsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_source = m_dir->filePath(QStringLiteral("source"));
        QVERIFY(writeBytes(m_source, QByteArray(3 * 1024 * 1024, 's')));
        m_place = std::make_unique<StoreUnderTest>();
        m_bucket = std::make_unique<RawBucket>(m_place->settings());
        m_store = m_place->opened();
        QVERIFY(m_store);
    }

    void cleanup()
    {
        m_store.reset();
        m_bucket.reset();
        m_place.reset();
    }

    /// The child is killed -9 in the middle of its put.
    void aKilledPut()
    {
        for (int round = 0; round < 5; ++round) {
            killPutting(m_name);
            QCOMPARE(m_bucket->count(".files"), 0);
            QCOMPARE(m_bucket->count(".kodms.puts"), 1);
            // It may live for all that anybody knows.
            QCOMPARE(m_store->leftovers().value, QStringList());
            QVERIFY(m_store->sweep());
            QCOMPARE(m_bucket->count(".kodms.puts"), 1);
            const Outcome again = m_store->put(m_source, m_name, m_progress);
            QVERIFY(!again);
            QVERIFY(again.text.contains(m_name));
            age();
            QCOMPARE(m_store->leftovers().value, QStringList(QStringLiteral("puts/") + m_name));
            QVERIFY(m_place->opened());
            nothingLeft();
        }
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        QVERIFY(m_store->verify(m_name, m_progress));
    }

    /// Nobody opens the store in between: the next put clears away what keeps its name.
    void aPutAfterAKilledOneOfTheSameName()
    {
        killPutting(m_name);
        m_bucket->insert(".kodms.puts",
                         "{'_id': 'another', 'file': {'$oid': '65a000000000000000000001'}, "
                         "'state': 'open', 'seen': {'$date': {'$numberLong': '1'}}}");
        age();
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        QCOMPARE(m_bucket->count(".chunks"), 13);
        QVERIFY(m_store->verify(m_name, m_progress));
        QCOMPARE(m_store->leftovers().value, QStringList(QStringLiteral("puts/another")));
        QVERIFY(m_store->sweep());
        QVERIFY(m_store->remove(m_name));
        nothingLeft();
    }

    void thePutterOfAKilledProgramIsGone()
    {
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        const auto other = m_place->opened();
        QVERIFY(other->isPutterAlive(m_name));
        QVERIFY(m_bucket->update(".kodms.live", "{}", LongAgo) > 0);
        QVERIFY(!other->isPutterAlive(m_name));
        QVERIFY(other->sweep());
        QVERIFY(!other->isPutterAlive(m_name));
        QVERIFY(other->verify(m_name, m_progress));
    }

    /// Held up so long that others have swept it: it must not come back as a stored file.
    void aPutThatWasTakenForDead()
    {
        MeddlingProgress progress([this] {
            age();
            QVERIFY(m_place->opened()->sweep());
            QCOMPARE(m_bucket->count(".kodms.puts"), 0);
        });
        const Outcome put = m_store->put(m_source, m_name, progress);
        QVERIFY(!put);
        QVERIFY(put.text.contains(m_name));
        nothingLeft();
    }

    void aSweepThatWasKilledIsFinished()
    {
        m_bucket->insert(".kodms.puts",
                         "{'_id': 'half', 'file': {'$oid': '65a000000000000000000001'}, 'state': "
                         "'broken', 'seen': {'$date': {'$numberLong': '1'}}}");
        m_bucket->insert(".chunks",
                         chunk("65a000000000000000000009", "65a000000000000000000001", 0));
        QCOMPARE(m_store->leftovers().value, QStringList(QStringLiteral("puts/half")));
        QVERIFY(m_store->sweep());
        nothingLeft();
    }

    /// An object id tells the clock of the client that made it. These begin with the year 1970
    /// and with 2106, and are of now, for all that the server knows.
    void chunksOfNobodyAreSweptADayAfterTheyWereMet_data()
    {
        QTest::addColumn<QByteArray>("clock");
        QTest::newRow("a clock decades behind") << QByteArray("00000001");
        QTest::newRow("a clock decades ahead") << QByteArray("ff000000");
    }

    void chunksOfNobodyAreSweptADayAfterTheyWereMet()
    {
        QFETCH(QByteArray, clock);
        const QByteArray file = clock + "0000000000000007";
        const QStringList left{QStringLiteral("chunks/") + QString::fromLatin1(file)};
        m_bucket->insert(".chunks", chunk(clock + "0000000000000001", file, 0));
        for (int sweep = 0; sweep < 2; ++sweep) {
            QVERIFY(m_store->sweep());
            QCOMPARE(m_store->leftovers().value, left);
            QCOMPARE(m_bucket->count(".kodms.strays"), 1);
        }
        // The other client goes on: the day begins anew.
        ageStrays();
        m_bucket->insert(".chunks", chunk(clock + "0000000000000002", file, 1));
        QVERIFY(m_store->sweep());
        QCOMPARE(m_bucket->count(".chunks"), 2);
        QCOMPARE(m_bucket->count(".kodms.strays"), 1);
        QVERIFY(m_store->sweep());
        QCOMPARE(m_bucket->count(".chunks"), 2);
        ageStrays();
        QVERIFY(m_store->sweep());
        nothingLeft();
        QCOMPARE(m_bucket->count(".kodms.strays"), 0);
    }

    /// A removal by another client takes the first chunks first, and may have been killed.
    void chunksOfNobodyAreFoundWithoutTheirFirst_data()
    {
        QTest::addColumn<QByteArray>("id");
        QTest::newRow("an object id") << QByteArray("{'$oid': '65a000000000000000000001'}");
        QTest::newRow("a name") << QByteArray("'theirs'");
    }

    void chunksOfNobodyAreFoundWithoutTheirFirst()
    {
        QFETCH(QByteArray, id);
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        const int stored = m_bucket->count(".chunks");
        for (int n : {2, 3})
            m_bucket->insert(".chunks",
                             chunk("65a00000000000000000000" + QByteArray::number(n), "", n)
                                 .replace("{'$oid': ''}", id));
        QCOMPARE(m_store->leftovers().value.size(), 1);
        QVERIFY(m_store->sweep());
        QCOMPARE(m_bucket->count(".chunks"), stored + 2);
        ageStrays();
        QVERIFY(m_store->sweep());
        QCOMPARE(m_bucket->count(".chunks"), stored);
        QCOMPARE(m_store->leftovers().value, QStringList());
        QVERIFY(m_store->verify(m_name, m_progress));
    }

    void aPutOfAnotherClientThatCameToItsEndIsNoStray()
    {
        m_bucket->insert(".chunks",
                         chunk("65a000000000000000000009", "65a000000000000000000001", 0));
        QVERIFY(m_store->sweep());
        ageStrays();
        m_bucket->insert(".files", "{'_id': {'$oid': '65a000000000000000000001'}, 'length': 1, "
                                   "'chunkSize': 261120, 'filename': 'theirs.tgz'}");
        QVERIFY(m_store->sweep());
        QCOMPARE(m_bucket->count(".kodms.strays"), 0);
        QVERIFY(m_store->verify(QStringLiteral("theirs.tgz"), m_progress));
    }

    void chunksOfStoredFilesStay()
    {
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        const int chunks = m_bucket->count(".chunks");
        QVERIFY(m_store->sweep());
        QCOMPARE(m_bucket->count(".chunks"), chunks);
        QVERIFY(m_store->verify(m_name, m_progress));
    }

    void aRemovalThatWasKilledIsFinished()
    {
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        auto hold = m_store->hold();
        QVERIFY(m_store->remove(m_name));
        QVERIFY(m_bucket->count(".chunks") > 0);
        // As if the backup had been killed.
        QCOMPARE(m_bucket->remove(".kodms.live", "{'kind': 'hold'}"), 1);
        QCOMPARE(m_store->leftovers().value, QStringList(QStringLiteral("removed/") + m_name));
        QVERIFY(m_place->opened());
        nothingLeft();
        hold.value.reset();
    }

    void aRemovalThatWasOnlyNoted()
    {
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        const QJsonObject id = m_bucket->first(".files").value(QStringLiteral("_id")).toObject();
        const QByteArray oid = id.value(QStringLiteral("$oid")).toString().toLatin1();
        m_bucket->insert(
            ".kodms.removed",
            "{'_id': {'$oid': '" + oid +
                "'}, 'filename': 'stored.tgz', 'seen': {'$date': {'$numberLong': '1'}}}");
        QVERIFY(m_store->sweep());
        QCOMPARE(m_bucket->count(".kodms.removed"), 0);
        QVERIFY(m_store->verify(m_name, m_progress));
    }

    void aBackupThatWasKilledHoldsNothingForLong()
    {
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        auto hold = m_store->hold();
        QVERIFY(m_store->remove(m_name));
        QVERIFY(m_place->opened());
        QVERIFY(hold.value->find(m_name));
        QVERIFY(m_bucket->update(".kodms.live", "{'kind': 'hold'}", LongAgo) > 0);
        QVERIFY(m_place->opened());
        nothingLeft();
        QVERIFY(!hold.value->find(m_name));
    }

    void aNameThatWasRemovedTwiceWhileHeld()
    {
        auto hold = m_store->hold();
        for (const char *content : {"first", "second"}) {
            QVERIFY(writeBytes(m_source, content));
            QVERIFY(m_store->put(m_source, m_name, m_progress));
            QVERIFY(m_store->remove(m_name));
        }
        QByteArray read;
        QVERIFY(hold.value->read(
            m_name,
            [&read](const char *data, qint64 size) {
                read.append(data, static_cast<int>(size));
                return Outcome::success();
            },
            m_progress));
        QVERIFY(read == "first" || read == "second");
        hold.value.reset();
        nothingLeft();
    }

private:
    void ageStrays() { QVERIFY(m_bucket->update(".kodms.strays", "{}", LongAgo) > 0); }

    void age() { QVERIFY(m_bucket->update(".kodms.puts", "{}", LongAgo) > 0); }

    void killPutting(const QString &name)
    {
        QProcess child;
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        const FileStoreSettings settings = m_place->settings();
        child.start(QCoreApplication::applicationFilePath(),
                    {QStringLiteral("--put"), settings.database, m_source, name});
        QVERIFY(child.waitForReadyRead(60000));
        QCOMPARE(child.readAllStandardOutput().trimmed(), QByteArray("begun"));
        // All that it has sent is there: nothing may arrive after the sweep.
        QTRY_COMPARE_WITH_TIMEOUT(m_bucket->count(".chunks"), 4, 60000);
        child.kill();
        QVERIFY(child.waitForFinished(60000));
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
    }

    /// But the signs of life of those who live.
    void nothingLeft()
    {
        QCOMPARE(m_store->leftovers().value, QStringList());
        for (const char *part : {".files", ".chunks", ".kodms.puts", ".kodms.removed"})
            QVERIFY2(m_bucket->count(part) == 0, part);
    }

    const QString m_name = QStringLiteral("stored.tgz");
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<StoreUnderTest> m_place;
    std::unique_ptr<RawBucket> m_bucket;
    QString m_source;
    std::unique_ptr<FileStore> m_store;
    NoProgress m_progress;
};

namespace {

/// The program as its own victim: puts, and never ends.
int putForEver(const QStringList &arguments)
{
    FileStoreSettings settings = StoreUnderTest().settings();
    settings.database = arguments.at(2);
    const auto store = FileStore::create(settings);
    EndlessProgress progress;
    const Outcome never = store.value->put(arguments.at(3), arguments.at(4), progress);
    std::fprintf(stderr, "%s\n", qPrintable(never.cause));
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    prepareEnvironment();
    const QCoreApplication app(argc, argv);
    if (MongoServer::uri().isEmpty())
        return MongoServer::skip();
    if (QCoreApplication::arguments().value(1) == QLatin1String("--put"))
        return putForEver(QCoreApplication::arguments());
    GridFsRemainsTest test;
    return runTests(&test, QCoreApplication::arguments());
}

#include "GridFsRemainsTest.moc"
