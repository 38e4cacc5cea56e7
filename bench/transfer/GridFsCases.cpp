// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/transfer/GridFsCases.h"

#include "services/filestore/FileStore.h"

#include <QProcess>

#include <stdexcept>

namespace KODMS::Bench {

using namespace Services;

namespace {

/// In which their file is stored for getting: the test server cannot answer PyMongo's
/// reads of a large file in chunks of the usual 255 KiB.
constexpr int TheirChunkKiB = 128;

void must(const Outcome &outcome)
{
    if (!outcome)
        throw std::runtime_error(outcome.cause.toStdString());
}

std::unique_ptr<FileStore> storeIn(const QString &uri, const QString &database,
                                   const QString &bucket)
{
    FileStoreSettings settings;
    settings.kind = QStringLiteral("gridfs");
    // PyMongo waits for as long as an answer takes, and so do we here: the test server sorts all
    // of a file before it sends the first piece.
    settings.uri = uri + QStringLiteral("?socketTimeoutMS=600000");
    settings.database = database;
    settings.bucket = bucket;
    auto store = FileStore::create(settings);
    must(store.outcome);
    return std::move(store.value);
}

/// A command line that does `action` to `bucket`.
QString python(const QString &uri, const QString &database, const QString &bucket,
               const QString &action)
{
    return QStringLiteral("/usr/bin/python3 -c \"import pymongo, gridfs; "
                          "bucket = gridfs.GridFSBucket(pymongo.MongoClient('%1')['%2'], '%3'); "
                          "%4\"")
        .arg(uri, database, bucket, action);
}

QString newBucket()
{
    static int made = 0;
    return QStringLiteral("run%1").arg(++made);
}

TransferCase putCase(const Material &material, const QString &uri)
{
    TransferCase one;
    one.name = QStringLiteral("put one file, GridFS");
    one.goal = 1.0;
    one.prepare = [&material] { return QStringList(material.serverFile()); };
    one.ours = [&material, uri](const QString &) {
        NoProgress progress;
        must(storeIn(uri, QStringLiteral("ours"), newBucket())
                 ->put(material.serverFile(), QStringLiteral("file"), progress));
    };
    one.theirs = [&material, uri] {
        return python(uri, QStringLiteral("theirs"), QStringLiteral("run'+str(os.getpid())+'"),
                      QStringLiteral("bucket.upload_from_stream('file', open('%1', 'rb'))")
                          .arg(material.serverFile()))
            .replace(QStringLiteral("import pymongo"), QStringLiteral("import os, pymongo"));
    };
    return one;
}

TransferCase getCase(const Material &material, const QString &uri)
{
    const QString bucket = QStringLiteral("stored");
    TransferCase one;
    one.name = QStringLiteral("get one file, GridFS");
    one.goal = 1.0;
    one.prepare = [=, &material] {
        NoProgress progress;
        must(storeIn(uri, QStringLiteral("oursget"), bucket)
                 ->put(material.serverFile(), QStringLiteral("file"), progress));
        shell(QDir::tempPath(),
              python(uri, QStringLiteral("theirsget"), bucket,
                     QStringLiteral("bucket.upload_from_stream('file', open('%1', 'rb'), "
                                    "chunk_size_bytes=%2 * 1024)")
                         .arg(material.serverFile())
                         .arg(TheirChunkKiB)));
        return QStringList();
    };
    one.ours = [=](const QString &folder) {
        NoProgress progress;
        must(storeIn(uri, QStringLiteral("oursget"), bucket)
                 ->get(QStringLiteral("file"), folder + QStringLiteral("/fetched"), progress));
    };
    one.theirs = [=] {
        return python(uri, QStringLiteral("theirsget"), bucket,
                      QStringLiteral("bucket.download_to_stream_by_name('file', "
                                     "open('fetched', 'wb'))"));
    };
    return one;
}

} // namespace

bool hasPyMongo()
{
    return QProcess::execute(QStringLiteral("/usr/bin/python3"),
                             {QStringLiteral("-c"), QStringLiteral("import pymongo, gridfs")}) == 0;
}

std::vector<TransferCase> gridFsCases(const Material &material, const MongoServer &server)
{
    std::vector<TransferCase> cases{putCase(material, server.uri()),
                                    getCase(material, server.uri())};
    for (TransferCase &one : cases)
        one.serverCpu = [&server] { return server.cpu(); };
    return cases;
}

} // namespace KODMS::Bench
