// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/filestore/support/RawBucket.h"
#include "tests/filestore/support/StoreTestMain.h"

#include <QCryptographicHash>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

QString python()
{
    const QString debian = QStringLiteral("/usr/bin/python3");
    return QFile::exists(debian) ? debian : QStringLiteral("python3");
}

/// The standard output of a Python program; what else it says goes to the log.
QByteArray outputOf(const QStringList &arguments, bool *isDone = nullptr)
{
    QProcess process;
    process.start(python(), arguments);
    const bool done = process.waitForFinished(60000) &&
                      process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (isDone)
        *isDone = done;
    else if (!done)
        QTest::qFail(process.readAllStandardError().constData(), __FILE__, __LINE__);
    return process.readAllStandardOutput().trimmed();
}

const QString Put = QStringLiteral(R"py(
import sys, pymongo, gridfs
uri, database, bucket, name, path = sys.argv[1:]
place = gridfs.GridFSBucket(pymongo.MongoClient(uri)[database], bucket_name=bucket)
with open(path, 'rb') as source:
    place.upload_from_stream(name, source)
)py");

const QString Get = QStringLiteral(R"py(
import sys, pymongo, gridfs
uri, database, bucket, name, path = sys.argv[1:]
place = gridfs.GridFSBucket(pymongo.MongoClient(uri)[database], bucket_name=bucket)
with open(path, 'wb') as target:
    place.download_to_stream_by_name(name, target)
print(place.open_download_stream_by_name(name).metadata['sha256'])
)py");

} // namespace

/// Another GridFS client of another origin reads what we put, and we what it puts.
class GridFsOtherClientsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void contents_data()
    {
        QTest::addColumn<QByteArray>("content");
        constexpr int Chunk = 255 * 1024;
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("one byte") << QByteArray("x");
        QTest::newRow("all bytes") << QByteArray::fromHex("000102fdfeff0d0a1a");
        QTest::newRow("a chunk but one byte") << QByteArray(Chunk - 1, 'a');
        QTest::newRow("a whole chunk") << QByteArray(Chunk, 'b');
        QTest::newRow("a chunk and a byte") << QByteArray(Chunk + 1, 'c');
        QTest::newRow("several messages") << QByteArray(12 * Chunk + 5, 'd');
    }

    void contents()
    {
        QFETCH(QByteArray, content);
        const QTemporaryDir dir;
        const QString source = dir.filePath(QStringLiteral("source"));
        const QString target = dir.filePath(QStringLiteral("target"));
        QVERIFY(writeBytes(source, content));
        const StoreUnderTest place;
        const auto store = place.opened();
        NoProgress progress;

        QVERIFY(store->put(source, QStringLiteral("ours"), progress));
        QCOMPARE(run(Get, place, QStringLiteral("ours"), target),
                 QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex());
        QVERIFY(bytesOf(target) == content);

        run(Put, place, QStringLiteral("theirs"), source);
        QVERIFY(store->get(QStringLiteral("theirs"), target, progress));
        QVERIFY(bytesOf(target) == content);
        QVERIFY(store->verify(QStringLiteral("theirs"), progress));
        QCOMPARE(store->list().value.size(), 2);
        QVERIFY(store->remove(QStringLiteral("theirs")));
        const RawBucket bucket(place.settings());
        QCOMPARE(bucket.count(".files"), 1);
    }

private:
    static QByteArray run(const QString &program, const StoreUnderTest &place, const QString &name,
                          const QString &path)
    {
        const FileStoreSettings settings = place.settings();
        return outputOf({QStringLiteral("-c"), program, settings.uri, settings.database,
                         settings.bucket, name, path});
    }
};

int main(int argc, char **argv)
{
    prepareEnvironment();
    const QCoreApplication app(argc, argv);
    if (MongoServer::uri().isEmpty())
        return MongoServer::skip();
    bool isThere = false;
    outputOf({QStringLiteral("-c"), QStringLiteral("import pymongo, gridfs")}, &isThere);
    if (!isThere) {
        std::puts("SKIP   : python3 has no gridfs here (package python3-gridfs)");
        return 77;
    }
    GridFsOtherClientsTest test;
    return runTests(&test, QCoreApplication::arguments());
}

#include "GridFsOtherClientsTest.moc"
