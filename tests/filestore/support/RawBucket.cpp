// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/filestore/support/RawBucket.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

namespace KODMS::Tests {

RawBucket::RawBucket(const Services::FileStoreSettings &settings)
    : m_database(settings.database.toUtf8()), m_bucket(settings.bucket.toUtf8())
{
    mongoc_init();
    m_client = mongoc_client_new(settings.uri.toUtf8().constData());
}

RawBucket::~RawBucket()
{
    mongoc_client_destroy(m_client);
}

QJsonObject RawBucket::run(const QByteArray &command) const
{
    const QByteArray text = QByteArray(command).replace("%B", m_bucket).replace('\'', '"');
    bson_error_t error{};
    bson_t *document = bson_new_from_json(reinterpret_cast<const uint8_t *>(text.constData()),
                                          text.size(), &error);
    if (!document) {
        QTest::qFail(error.message, __FILE__, __LINE__);
        return {};
    }
    bson_t reply;
    if (!mongoc_client_command_simple(m_client, m_database.constData(), document, nullptr, &reply,
                                      &error))
        QTest::qFail(error.message, __FILE__, __LINE__);
    char *json = bson_as_relaxed_extended_json(&reply, nullptr);
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    bson_free(json);
    bson_destroy(&reply);
    bson_destroy(document);
    if (object.contains(QStringLiteral("writeErrors")))
        QTest::qFail("the server refused a change", __FILE__, __LINE__);
    return object;
}

void RawBucket::drop() const
{
    run("{'dropDatabase': 1}");
}

QStringList RawBucket::collections() const
{
    QStringList names;
    const QJsonObject cursor =
        run("{'listCollections': 1}").value(QStringLiteral("cursor")).toObject();
    for (const auto &one : cursor.value(QStringLiteral("firstBatch")).toArray())
        names << one.toObject().value(QStringLiteral("name")).toString();
    return names;
}

int RawBucket::count(const char *part, const QByteArray &filter) const
{
    return run("{'count': '%B" + QByteArray(part) + "', 'query': " + filter + "}")
        .value(QStringLiteral("n"))
        .toInt();
}

QJsonObject RawBucket::first(const char *part, const QByteArray &filter) const
{
    return run("{'find': '%B" + QByteArray(part) + "', 'filter': " + filter + ", 'limit': 1}")
        .value(QStringLiteral("cursor"))
        .toObject()
        .value(QStringLiteral("firstBatch"))
        .toArray()
        .at(0)
        .toObject();
}

void RawBucket::insert(const char *part, const QByteArray &document) const
{
    run("{'insert': '%B" + QByteArray(part) + "', 'documents': [" + document + "]}");
}

int RawBucket::update(const char *part, const QByteArray &filter, const QByteArray &change) const
{
    return run("{'update': '%B" + QByteArray(part) + "', 'updates': [{'q': " + filter +
               ", 'u': " + change + ", 'multi': true}]}")
        .value(QStringLiteral("n"))
        .toInt();
}

int RawBucket::remove(const char *part, const QByteArray &filter) const
{
    return run("{'delete': '%B" + QByteArray(part) + "', 'deletes': [{'q': " + filter +
               ", 'limit': 0}]}")
        .value(QStringLiteral("n"))
        .toInt();
}

} // namespace KODMS::Tests
