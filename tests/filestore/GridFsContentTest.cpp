// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/filestore/support/RawBucket.h"
#include "tests/filestore/support/StoreTestMain.h"
#include "tests/support/HasFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

QByteArray binary(const QByteArray &bytes)
{
    return "{'$binary': {'base64': '" + bytes.toBase64() + "', 'subType': '00'}}";
}

} // namespace

/// What stands in the bucket: damage, and the files of other clients.
class GridFsContentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_source = m_dir->filePath(QStringLiteral("source"));
        m_target = m_dir->filePath(QStringLiteral("target"));
        QVERIFY(writeBytes(m_source, m_content));
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

    void aPutIsWhatEveryClientExpects()
    {
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        const QJsonObject file = m_bucket->first(".files");
        QCOMPARE(file.value(QStringLiteral("filename")).toString(), m_name);
        QCOMPARE(file.value(QStringLiteral("length")).toInt(), m_content.size());
        QCOMPARE(file.value(QStringLiteral("chunkSize")).toInt(), 261120);
        QVERIFY(
            file.value(QStringLiteral("uploadDate")).toObject().contains(QStringLiteral("$date")));
        const QJsonObject metadata = file.value(QStringLiteral("metadata")).toObject();
        QCOMPARE(metadata.value(QStringLiteral("sha256")).toString(), digestText());
        QCOMPARE(m_bucket->count(".chunks"), 3);
        QCOMPARE(m_bucket->count(".kodms.puts"), 0);
    }

    void damage_data()
    {
        QTest::addColumn<QByteArray>("part");
        QTest::addColumn<QByteArray>("filter");
        QTest::addColumn<QByteArray>("change"); // none: removed
        const QByteArray chunks(".chunks");
        const QByteArray files(".files");
        const auto data = [](const QByteArray &bytes) -> QByteArray {
            return "{'$set': {'data': " + binary(bytes) + "}}";
        };
        QTest::newRow("the first chunk is gone")
            << chunks << QByteArray("{'n': 0}") << QByteArray();
        QTest::newRow("a chunk in the middle is gone")
            << chunks << QByteArray("{'n': 1}") << QByteArray();
        QTest::newRow("the last chunk is gone") << chunks << QByteArray("{'n': 2}") << QByteArray();
        QTest::newRow("all chunks are gone") << chunks << QByteArray("{}") << QByteArray();
        QTest::newRow("other bytes")
            << chunks << QByteArray("{'n': 1}") << data(QByteArray(261120, 'x'));
        QTest::newRow("a chunk cut short")
            << chunks << QByteArray("{'n': 1}") << data(QByteArray(261119, 'c'));
        QTest::newRow("the last chunk cut short") << chunks << QByteArray("{'n': 2}") << data("c");
        QTest::newRow("the last chunk grown")
            << chunks << QByteArray("{'n': 2}") << data(QByteArray(1001, 'c'));
        QTest::newRow("an empty chunk") << chunks << QByteArray("{'n': 1}") << data("");
        QTest::newRow("no bytes at all")
            << chunks << QByteArray("{'n': 1}") << QByteArray("{'$set': {'data': 'text'}}");
        QTest::newRow("a chunk with another number")
            << chunks << QByteArray("{'n': 2}") << QByteArray("{'$set': {'n': 3}}");
        QTest::newRow("a chunk numbered by a word")
            << chunks << QByteArray("{'n': 2}") << QByteArray("{'$set': {'n': 'two'}}");
        QTest::newRow("a length too small")
            << files << QByteArray("{}") << QByteArray("{'$inc': {'length': -1}}");
        QTest::newRow("a length of the first chunks")
            << files << QByteArray("{}") << QByteArray("{'$set': {'length': 522240}}");
        QTest::newRow("a length too large")
            << files << QByteArray("{}") << QByteArray("{'$inc': {'length': 1}}");
        QTest::newRow("a negative length")
            << files << QByteArray("{}") << QByteArray("{'$set': {'length': -5}}");
        QTest::newRow("no chunk size")
            << files << QByteArray("{}") << QByteArray("{'$set': {'chunkSize': 0}}");
        QTest::newRow("another chunk size")
            << files << QByteArray("{}") << QByteArray("{'$set': {'chunkSize': 1024}}");
        QTest::newRow("another digest")
            << files << QByteArray("{}")
            << QByteArray("{'$set': {'metadata.sha256': '" + QByteArray(64, '0') + "'}}");
    }

    void damage()
    {
        QFETCH(QByteArray, part);
        QFETCH(QByteArray, filter);
        QFETCH(QByteArray, change);
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        const int met = change.isEmpty() ? m_bucket->remove(part.constData(), filter)
                                         : m_bucket->update(part.constData(), filter, change);
        QVERIFY(met > 0);
        QVERIFY(!m_store->verify(m_name, m_progress));
        const Outcome got = m_store->get(m_name, m_target, m_progress);
        QVERIFY(!got);
        QVERIFY2(got.text.contains(m_name), qPrintable(got.text));
        QCOMPARE(filesBelow(m_dir->path()), QStringList(m_source));
    }

    void filesOfOthersCanBeRead_data()
    {
        QTest::addColumn<QByteArray>("id");
        QTest::addColumn<QByteArray>("length");
        QTest::newRow("an object id")
            << QByteArray("{'$oid': '65a000000000000000000001'}") << QByteArray("6");
        QTest::newRow("a text for an id") << QByteArray("'their id'") << QByteArray("6");
        QTest::newRow("a number for an id") << QByteArray("17") << QByteArray("6");
        QTest::newRow("a long length") << QByteArray("17") << QByteArray("{'$numberLong': '6'}");
        QTest::newRow("a length with a point")
            << QByteArray("17") << QByteArray("{'$numberDouble': '6.0'}");
    }

    void filesOfOthersCanBeRead()
    {
        QFETCH(QByteArray, id);
        QFETCH(QByteArray, length);
        putTheirs(id, "theirs.tgz", length, 4);
        putChunk(id, 0, "abcd");
        putChunk(id, 1, "ef");
        QVERIFY(hasFile(*m_store, QStringLiteral("theirs.tgz")));
        const auto list = m_store->list();
        QCOMPARE(list.value.size(), 1);
        QCOMPARE(list.value.at(0).size, qint64{6});
        QVERIFY(list.value.at(0).sha256.isEmpty());
        QVERIFY(m_store->get(QStringLiteral("theirs.tgz"), m_target, m_progress));
        QCOMPARE(bytesOf(m_target), QByteArray("abcdef"));
        // Nobody knows whether they are done with it.
        QVERIFY(m_store->isPutterAlive(QStringLiteral("theirs.tgz")));
        QVERIFY(m_store->sweep());
        QCOMPARE(m_store->leftovers().value, QStringList());
        const auto hold = m_store->hold();
        QCOMPARE(hold.value->find(QStringLiteral("theirs.tgz")).value.sha256,
                 QCryptographicHash::hash("abcdef", QCryptographicHash::Sha256).toHex());
        QVERIFY(m_store->remove(QStringLiteral("theirs.tgz")));
        QVERIFY(!hasFile(*m_store, QStringLiteral("theirs.tgz")));
    }

    void aFileOfOthersThatIsNotWhole()
    {
        putTheirs("17", "theirs.tgz", "6", 4);
        putChunk("17", 0, "abcd");
        const Outcome got = m_store->get(QStringLiteral("theirs.tgz"), m_target, m_progress);
        QVERIFY(!got);
        QVERIFY(got.text.contains(QStringLiteral("theirs.tgz")));
        QVERIFY(!QFile::exists(m_target));
    }

    void emptyFilesOfOthers()
    {
        putTheirs("1", "with-a-chunk", "0", 4);
        putChunk("1", 0, "");
        putTheirs("2", "without", "0", 4);
        for (const char *name : {"with-a-chunk", "without"}) {
            QVERIFY(m_store->get(QString::fromLatin1(name), m_target, m_progress));
            QCOMPARE(bytesOf(m_target), QByteArray());
        }
    }

    void oursIsTheStoredOneOfSeveral()
    {
        putTheirs("1", "stored.tgz", "1", 4);
        putChunk("1", 0, "1");
        QVERIFY(!m_store->put(m_source, m_name, m_progress));
        QVERIFY(m_store->remove(m_name));
        QVERIFY(m_store->put(m_source, m_name, m_progress));
        putTheirs("2", "stored.tgz", "1", 4);
        putChunk("2", 0, "2");
        QVERIFY(m_store->get(m_name, m_target, m_progress));
        QCOMPARE(bytesOf(m_target), m_content);
        QCOMPARE(m_store->list().value.size(), 1);
        QCOMPARE(m_store->leftovers().value, QStringList(QStringLiteral("files/stored.tgz")));
    }

    void ofOthersTheLastOneIsTheStoredOne()
    {
        for (const char *id : {"1", "2", "3"}) {
            putTheirs(id, "theirs", "1", 4, id);
            putChunk(id, 0, id);
        }
        QVERIFY(m_store->get(QStringLiteral("theirs"), m_target, m_progress));
        QCOMPARE(bytesOf(m_target), QByteArray("3"));
    }

    void namesThatNoStoredFileHas()
    {
        putTheirs("1", "../../etc/passwd", "0", 4);
        putTheirs("2", "two\\nlines", "0", 4);
        m_bucket->insert(".files", "{'_id': 3, 'length': 0, 'chunkSize': 4}");
        m_bucket->insert(".files", "{'_id': 4, 'filename': 5, 'length': 0, 'chunkSize': 4}");
        QCOMPARE(m_store->list().value.size(), 0);
        const QStringList left = m_store->leftovers().value;
        QCOMPARE(left, QStringList({QStringLiteral("files/"), QStringLiteral("files/"),
                                    QStringLiteral("files/../../etc/passwd"),
                                    QStringLiteral("files/two?lines")}));
        QVERIFY(m_store->sweep());
        QCOMPARE(m_bucket->count(".files"), 4);
    }

    void aThousandFilesAreListedInOrder()
    {
        constexpr int Files = 1000;
        constexpr int AtOnce = 100;
        for (int start = 0; start < Files; start += AtOnce) {
            QByteArray documents;
            for (int i = start; i < start + AtOnce; ++i)
                documents += (documents.isEmpty() ? "" : ", ") +
                             theirs(QByteArray::number(i), "f" + QByteArray::number(i), "0", 4);
            m_bucket->insert(".files", documents);
        }
        const auto list = m_store->list();
        QCOMPARE(list.value.size(), Files);
        QVERIFY(std::is_sorted(list.value.cbegin(), list.value.cend(),
                               [](const auto &a, const auto &b) { return a.name < b.name; }));
    }

private:
    QString digestText() const
    {
        return QString::fromLatin1(
            QCryptographicHash::hash(m_content, QCryptographicHash::Sha256).toHex());
    }

    static QByteArray theirs(const QByteArray &id, const QByteArray &name, const QByteArray &length,
                             int chunkSize, const QByteArray &time = "1")
    {
        return "{'_id': " + id + ", 'filename': '" + name + "', 'length': " + length +
               ", 'chunkSize': " + QByteArray::number(chunkSize) +
               ", 'uploadDate': {'$date': {'$numberLong': '" + time + "'}}}";
    }

    void putTheirs(const QByteArray &id, const QByteArray &name, const QByteArray &length,
                   int chunkSize, const QByteArray &time = "1")
    {
        m_bucket->insert(".files", theirs(id, name, length, chunkSize, time));
    }

    void putChunk(const QByteArray &id, int number, const QByteArray &bytes)
    {
        m_bucket->insert(".chunks", "{'files_id': " + id + ", 'n': " + QByteArray::number(number) +
                                        ", 'data': " + binary(bytes) + "}");
    }

    const QString m_name = QStringLiteral("stored.tgz");
    const QByteArray m_content = QByteArray(2 * 261120 + 1000, 'c');
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<StoreUnderTest> m_place;
    std::unique_ptr<RawBucket> m_bucket;
    QString m_source;
    QString m_target;
    std::unique_ptr<FileStore> m_store;
    NoProgress m_progress;
};

KODMS_STORE_TEST_MAIN(GridFsContentTest)
#include "GridFsContentTest.moc"
