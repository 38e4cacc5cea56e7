// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/filestore/support/StoreUnderTest.h"

#include "tests/filestore/support/RawBucket.h"
#include "tests/support/MongoServer.h"

#include <QDirIterator>
#include <QFile>
#include <QUuid>

namespace KODMS::Tests {

StoreUnderTest::StoreUnderTest()
{
    m_settings.kind = isGridFs() ? QStringLiteral("gridfs") : QStringLiteral("folder");
    m_settings.database = QStringLiteral("db");
    m_settings.bucket = QStringLiteral("bucket");
    if (isGridFs()) {
        m_settings.uri = MongoServer::uri();
        m_settings.database =
            QStringLiteral("kodms_test_") + QUuid::createUuid().toString(QUuid::Id128).left(16);
    } else {
        m_settings.root = m_dir.filePath(QStringLiteral("root"));
    }
}

StoreUnderTest::~StoreUnderTest()
{
    if (isGridFs())
        RawBucket(m_settings).drop();
}

bool StoreUnderTest::isGridFs()
{
    return qEnvironmentVariable("KODMS_TEST_STORE") == QLatin1String("gridfs");
}

std::unique_ptr<Services::FileStore> StoreUnderTest::opened() const
{
    return opened(m_settings.bucket);
}

std::unique_ptr<Services::FileStore> StoreUnderTest::opened(const QString &bucket) const
{
    Services::FileStoreSettings settings = m_settings;
    settings.bucket = bucket;
    auto store = Services::FileStore::create(settings);
    return std::move(store.value);
}

QStringList StoreUnderTest::strayFiles() const
{
    QStringList stray;
    for (const QString &file : filesBelow(m_dir.path()))
        if (!file.contains(QStringLiteral("/files/")) &&
            !file.contains(QStringLiteral("/live/owner-")))
            stray << file;
    return stray;
}

bool StoreUnderTest::isUntouched() const
{
    return isGridFs() ? RawBucket(m_settings).collections().isEmpty()
                      : !QFile::exists(m_settings.root);
}

QStringList filesBelow(const QString &folder)
{
    QStringList found;
    QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        found << it.next();
    return found;
}

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

} // namespace KODMS::Tests
