// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/filestore/support/RawBucket.h"
#include "tests/filestore/support/StoreTestMain.h"

#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <dlfcn.h>
#include <functional>
#include <mutex>
#include <utility>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

/// What the store's connections send, as the client library tells it.
class SentCommands {
public:
    static SentCommands &all()
    {
        static SentCommands commands;
        return commands;
    }

    void add(const char *name, const bson_t *command)
    {
        static const QSet<QString> writes{
            QStringLiteral("insert"),        QStringLiteral("update"),
            QStringLiteral("delete"),        QStringLiteral("createIndexes"),
            QStringLiteral("findAndModify"), QStringLiteral("create"),
            QStringLiteral("drop"),          QStringLiteral("dropDatabase")};
        const QString verb = QString::fromLatin1(name);
        const QString write = verb + QLatin1Char(' ') + partOf(name, command);
        if (verb == QLatin1String("find") || verb == QLatin1String("getMore"))
            addRead(command);
        if (write == QLatin1String("find files"))
            meddle();
        if (!writes.contains(verb))
            return;
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_writes.insert(write);
        if (!waitsForMajority(command))
            m_hasty.insert(write);
    }

    QStringList writes() const { return sorted(m_writes); }

    /// Those that some server alone acknowledges.
    QStringList hasty() const { return sorted(m_hasty); }

    /// How many documents were asked for at once, where it was said.
    QSet<qint64> batches() const
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        return m_batches;
    }

    /// Done once, when a file is looked for after one was published.
    void beforeReadBack(std::function<void()> what)
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_beforeReadBack = std::move(what);
    }

    void forget()
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_batches.clear();
        m_writes.clear();
        m_hasty.clear();
    }

private:
    /// Of a bucket's collections, the one that a command is about.
    static QString partOf(const char *name, const bson_t *command)
    {
        bson_iter_t where;
        const bool isNamed =
            bson_iter_init_find(&where, command, name) && BSON_ITER_HOLDS_UTF8(&where);
        return QString::fromUtf8(isNamed ? bson_iter_utf8(&where, nullptr) : "")
            .section(QLatin1Char('.'), 1);
    }

    void meddle()
    {
        std::function<void()> what;
        {
            const std::lock_guard<std::mutex> guard(m_mutex);
            if (m_writes.contains(QStringLiteral("insert files")))
                what = std::exchange(m_beforeReadBack, nullptr);
        }
        if (what)
            what();
    }

    void addRead(const bson_t *command)
    {
        bson_iter_t size;
        if (!bson_iter_init_find(&size, command, "batchSize"))
            return;
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_batches.insert(bson_iter_as_int64(&size));
    }

    static bool waitsForMajority(const bson_t *command)
    {
        bson_iter_t all;
        bson_iter_t concern;
        return bson_iter_init(&all, command) &&
               bson_iter_find_descendant(&all, "writeConcern.w", &concern) &&
               BSON_ITER_HOLDS_UTF8(&concern) &&
               qstrcmp(bson_iter_utf8(&concern, nullptr), "majority") == 0;
    }

    QStringList sorted(const QSet<QString> &names) const
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        QStringList list(names.cbegin(), names.cend());
        list.sort();
        return list;
    }

    mutable std::mutex m_mutex;
    QSet<QString> m_writes;
    QSet<QString> m_hasty;
    QSet<qint64> m_batches;
    std::function<void()> m_beforeReadBack;
};

void started(const mongoc_apm_command_started_t *event)
{
    SentCommands::all().add(mongoc_apm_command_started_get_command_name(event),
                            mongoc_apm_command_started_get_command(event));
}

} // namespace

/// Stands before the library's own, so that whatever the store sends is seen.
extern "C" mongoc_client_pool_t *mongoc_client_pool_new(const mongoc_uri_t *uri)
{
    using Make = mongoc_client_pool_t *(*)(const mongoc_uri_t *);
    const auto make = reinterpret_cast<Make>(dlsym(RTLD_NEXT, "mongoc_client_pool_new"));
    mongoc_client_pool_t *pool = make ? make(uri) : nullptr;
    if (!pool)
        return nullptr;
    mongoc_apm_callbacks_t *callbacks = mongoc_apm_callbacks_new();
    mongoc_apm_set_command_started_cb(callbacks, started);
    mongoc_client_pool_set_apm_callbacks(pool, callbacks, nullptr);
    mongoc_apm_callbacks_destroy(callbacks);
    return pool;
}

/// What is acknowledged stands on most servers of a set, so that the loss of one takes
/// nothing away.
class GridFsWritesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void everyKindOfWriteWaitsForTheMajority_data()
    {
        QTest::addColumn<QString>("options");
        QTest::newRow("by itself") << QString();
        QTest::newRow("although the address asks for less") << QStringLiteral("/?w=1");
    }

    void everyKindOfWriteWaitsForTheMajority()
    {
        QFETCH(QString, options);
        const StoreUnderTest place;
        FileStoreSettings settings = place.settings();
        if (settings.uri.endsWith(QLatin1Char('/')))
            settings.uri.chop(1);
        settings.uri += options;
        SentCommands::all().forget();
        doEverything(settings);
        QCOMPARE(SentCommands::all().hasty(), QStringList());
        QStringList known;
        for (const char *write :
             {"createIndexes chunks", "createIndexes files", "delete chunks", "delete files",
              "delete kodms.live", "delete kodms.puts", "delete kodms.removed",
              "delete kodms.strays", "insert chunks", "insert files", "update kodms.live",
              "update kodms.puts", "update kodms.removed", "update kodms.strays"})
            known << QString::fromLatin1(write);
        QCOMPARE(SentCommands::all().writes(), known);
    }

    /// Eight of these largest chunks are more than a message of the protocol may be.
    void anAnswerHoldsWhatAMessageMay_data()
    {
        QTest::addColumn<qint64>("chunkSize");
        QTest::addColumn<qint64>("chunks");
        QTest::newRow("of our size") << qint64{255 * 1024} << qint64{32};
        QTest::newRow("small ones of another client") << qint64{1024} << qint64{8192};
        QTest::newRow("large ones of another client") << qint64{15 * 1024 * 1024} << qint64{1};
    }

    void anAnswerHoldsWhatAMessageMay()
    {
        QFETCH(qint64, chunkSize);
        QFETCH(qint64, chunks);
        const StoreUnderTest place;
        const RawBucket bucket(place.settings());
        bucket.insert(".files", "{'_id': {'$oid': '65a000000000000000000001'}, 'length': 1, "
                                "'chunkSize': " +
                                    QByteArray::number(chunkSize) + ", 'filename': 'theirs.tgz'}");
        bucket.insert(".chunks", "{'_id': {'$oid': '65a000000000000000000009'}, 'files_id': "
                                 "{'$oid': '65a000000000000000000001'}, 'n': 0, 'data': "
                                 "{'$binary': {'base64': 'YQ==', 'subType': '00'}}}");
        const auto store = place.opened();
        SentCommands::all().forget();
        NoProgress progress;
        QVERIFY(store->verify(QStringLiteral("theirs.tgz"), progress));
        QCOMPARE(SentCommands::all().batches(), QSet<qint64>{chunks});
    }

    /// What the server says that it has is what counts, not what it acknowledged.
    void aPutThatReadsBackOtherwiseFails_data()
    {
        QTest::addColumn<QByteArray>("change");
        QTest::newRow("nothing else") << QByteArray("{'$set': {'contentType': 'text/plain'}}");
        QTest::newRow("another size") << QByteArray("{'$set': {'length': {'$numberLong': '6'}}}");
        QTest::newRow("another content")
            << QByteArray("{'$set': {'metadata.sha256': '" + QByteArray(64, '0') + "'}}");
        QTest::newRow("gone") << QByteArray();
    }

    void aPutThatReadsBackOtherwiseFails()
    {
        QFETCH(QByteArray, change);
        const StoreUnderTest place;
        const RawBucket bucket(place.settings());
        const QTemporaryDir dir;
        const QString source = dir.filePath(QStringLiteral("source"));
        QVERIFY(writeBytes(source, "content"));
        const auto store = place.opened();
        int met = 0;
        SentCommands::all().forget();
        SentCommands::all().beforeReadBack([&] {
            met += change.isEmpty() ? bucket.remove(".files", "{}")
                                    : bucket.update(".files", "{}", change);
        });
        NoProgress progress;
        const Outcome put = store->put(source, QStringLiteral("a.tgz"), progress);
        QCOMPARE(met, 1);
        const bool isSame = change.contains("contentType");
        QCOMPARE(put.ok, isSame);
        QCOMPARE(put.cause.contains(QStringLiteral("recorded 7 bytes")), !isSame);
        for (const char *part : {".files", ".chunks"})
            QCOMPARE(bucket.count(part), isSame ? 1 : 0);
        QCOMPARE(bucket.count(".kodms.puts"), 0);
    }

private:
    static void doEverything(const FileStoreSettings &settings)
    {
        const RawBucket bucket(settings);
        const QTemporaryDir dir;
        const QString source = dir.filePath(QStringLiteral("source"));
        QVERIFY(writeBytes(source, "content"));
        NoProgress progress;
        const auto store = FileStore::create(settings);
        QVERIFY2(store, qPrintable(store.text()));
        QVERIFY(store.value->put(source, QStringLiteral("a.tgz"), progress));
        {
            const auto hold = store.value->hold();
            QVERIFY(store.value->remove(QStringLiteral("a.tgz")));
        }
        bucket.insert(".chunks", "{'_id': {'$oid': '65a000000000000000000009'}, 'files_id': "
                                 "{'$oid': '65a000000000000000000001'}, 'n': 0, 'data': "
                                 "{'$binary': {'base64': 'YQ==', 'subType': '00'}}}");
        QVERIFY(store.value->sweep());
        QVERIFY(bucket.update(".kodms.strays", "{}",
                              "{'$set': {'seen': {'$date': {'$numberLong': '1'}}}}") > 0);
        QVERIFY(store.value->sweep());
        QCOMPARE(bucket.count(".chunks"), 0);
    }
};

KODMS_STORE_TEST_MAIN(GridFsWritesTest)

#include "GridFsWritesTest.moc"
