// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/filestore/support/MeddlingProgress.h"
#include "tests/filestore/support/OwnServer.h"
#include "tests/filestore/support/RawBucket.h"
#include "tests/filestore/support/StoreTestMain.h"
#include "tests/support/HasFile.h"

#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// The server goes away, comes back, or never was there.
class GridFsServerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_source = m_dir->filePath(QStringLiteral("source"));
        m_target = m_dir->filePath(QStringLiteral("target"));
        QVERIFY(writeBytes(m_source, m_content));
        m_server = std::make_unique<OwnServer>();
        QVERIFY2(m_server->start(), qPrintable(m_server->errorText()));
        m_settings.kind = QStringLiteral("gridfs");
        m_settings.uri = m_server->uri();
        m_settings.database = QStringLiteral("kodms_test");
        m_settings.bucket = QStringLiteral("bucket");
        auto store = FileStore::create(m_settings);
        QVERIFY2(store, qPrintable(store.outcome.cause));
        m_store = std::move(store.value);
        QVERIFY(m_store->put(m_source, m_name, m_progress));
    }

    void cleanup()
    {
        m_server->resume();
        m_store.reset();
        m_server.reset();
    }

    void theNextActionAfterARestartSucceeds()
    {
        m_server->kill();
        QVERIFY(m_server->start());
        QVERIFY(m_store->verify(m_name, m_progress));
        m_server->kill();
        QVERIFY(m_server->start());
        QVERIFY(m_store->put(m_source, QStringLiteral("next"), m_progress));
        m_server->kill();
        QVERIFY(m_server->start());
        QVERIFY(m_store->hold());
        m_server->kill();
        QVERIFY(m_server->start());
        QVERIFY(m_store->leftovers());
        m_server->kill();
        QVERIFY(m_server->start());
        QVERIFY(m_store->remove(m_name));
        QVERIFY(!hasFile(*m_store, m_name));
    }

    void everythingSaysThatTheServerIsLost()
    {
        const auto impatient = openedImpatiently();
        FileStore &store = *impatient;
        m_server->kill();
        const QVector<Outcome> outcomes{
            store.put(m_source, QStringLiteral("other"), m_progress),
            store.get(m_name, m_target, m_progress),
            store.find(m_name).outcome,
            store.has(m_name).outcome,
            store.removeIfThere(m_name),
            store.removeIfThere(QStringLiteral("never")),
            store.list().outcome,
            store.remove(m_name),
            store.hold().outcome,
            store.leftovers().outcome,
            store.sweep(),
        };
        for (const Outcome &outcome : outcomes) {
            QVERIFY(!outcome);
            QVERIFY2(outcome.text.contains(m_server->address()), qPrintable(outcome.text));
        }
        // Not knowing must not remove anything.
        QVERIFY(store.isPutterAlive(m_name));
        QVERIFY(m_server->start());
        // Impatient as it is, it may give up on a busy machine before it has found the server.
        QTRY_VERIFY_WITH_TIMEOUT(store.verify(m_name, m_progress), 30000);
    }

    void aServerKilledDuringAPut()
    {
        MeddlingProgress progress([this] { m_server->kill(); });
        const auto impatient = openedImpatiently();
        const Outcome put = impatient->put(m_source, QStringLiteral("other"), progress);
        QVERIFY(!put);
        QVERIFY2(put.text.contains(m_server->address()), qPrintable(put.text));
        QVERIFY(m_server->start());
        QVERIFY(!hasFile(*m_store, QStringLiteral("other")));
        QVERIFY(m_store->put(m_source, QStringLiteral("third"), m_progress));
        const RawBucket bucket(m_settings);
        QCOMPARE(bucket.count(".kodms.puts"), 1);
        bucket.update(".kodms.puts", "{}", "{'$set': {'seen': {'$date': {'$numberLong': '1'}}}}");
        QVERIFY(m_store->sweep());
        QCOMPARE(m_store->leftovers().value, QStringList());
        QCOMPARE(m_store->list().value.size(), 2);
        QVERIFY(m_store->put(m_source, QStringLiteral("other"), m_progress));
        for (const char *name : {"other", "third"})
            QVERIFY(m_store->verify(QString::fromLatin1(name), m_progress));
    }

    void aServerKilledDuringAGet()
    {
        const QByteArray content(MoreThanAGetIsAhead, 'g');
        const QString name = QStringLiteral("large.tgz");
        QVERIFY(writeBytes(m_source, content));
        QVERIFY(m_store->put(m_source, name, m_progress));
        MeddlingProgress progress([this] { m_server->kill(); });
        const auto impatient = openedImpatiently();
        const Outcome got = impatient->get(name, m_target, progress);
        QVERIFY(!got);
        QVERIFY2(got.text.contains(m_server->address()), qPrintable(got.text));
        QCOMPARE(filesBelow(m_dir->path()), QStringList(m_source));
        QVERIFY(m_server->start());
        QVERIFY(m_store->get(name, m_target, m_progress));
        QVERIFY(bytesOf(m_target) == content);
    }

    /// A person who has pressed cancel does not wait for a server that answers nobody: here
    /// it would for ever.
    void cancelOfAGetFromASilentServer()
    {
        MeddlingProgress progress([&] {
            m_server->pause();
            progress.cancelled = true;
        });
        const Outcome got = m_store->get(m_name, m_target, progress);
        QVERIFY(!got);
        QCOMPARE(got.cause, QStringLiteral("cancelled"));
        QCOMPARE(filesBelow(m_dir->path()), QStringList(m_source));
        m_server->resume();
        QVERIFY(m_store->get(m_name, m_target, m_progress));
    }

    void cancelOfAPutToASilentServer()
    {
        MeddlingProgress progress([&] {
            m_server->pause();
            progress.cancelled = true;
        });
        const Outcome put = m_store->put(m_source, QStringLiteral("other"), progress);
        QVERIFY(!put);
        QCOMPARE(put.cause, QStringLiteral("cancelled"));
        m_server->resume();
        const RawBucket bucket(m_settings);
        QTRY_COMPARE_WITH_TIMEOUT(bucket.count(".kodms.puts"), 0, 60000);
        QCOMPARE(m_store->leftovers().value, QStringList());
        QVERIFY(m_store->put(m_source, QStringLiteral("other"), m_progress));
    }

private:
    /// Who does not wait long for a server that is not there.
    std::unique_ptr<FileStore> openedImpatiently() const
    {
        FileStoreSettings settings = m_settings;
        settings.uri += QStringLiteral("?serverSelectionTimeoutMS=300");
        auto store = FileStore::create(settings);
        return std::move(store.value);
    }

    const QString m_name = QStringLiteral("stored.tgz");
    // Two answers of the server: what waits to be written, and what is being taken in.
    static constexpr int MoreThanAGetIsAhead = 24 * 1024 * 1024;

    // More than a put has on its way at any time.
    const QByteArray m_content = QByteArray(8 * 1024 * 1024, 'c');
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<OwnServer> m_server;
    FileStoreSettings m_settings;
    QString m_source;
    QString m_target;
    std::unique_ptr<FileStore> m_store;
    NoProgress m_progress;
};

int main(int argc, char **argv)
{
    prepareEnvironment();
    const QCoreApplication app(argc, argv);
    if (MongoServer::uri().isEmpty())
        return MongoServer::skip();
    if (MongoServer::isForeign()) {
        std::puts("SKIP   : the server that KODMS_TEST_MONGO_URI names is not ours to kill");
        return 77;
    }
    GridFsServerTest test;
    return runTests(&test, QCoreApplication::arguments());
}

#include "GridFsServerTest.moc"
