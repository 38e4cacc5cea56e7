// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/Bson.h"

#include "services/filestore/gridfs/GridFsId.h"

namespace KODMS::Services {

namespace {

constexpr int WholeKey = -1;

void appendText(bson_t *document, const char *key, const QString &value)
{
    const QByteArray utf8 = value.toUtf8();
    bson_append_utf8(document, key, WholeKey, utf8.constData(), utf8.size());
}

/// An array is a document whose keys are the places.
template <typename Items, typename Append>
void appendArray(bson_t *document, const char *key, const Items &items, const Append &append)
{
    bson_t array;
    bson_append_array_begin(document, key, WholeKey, &array);
    int place = 0;
    for (const auto &item : items)
        append(&array, QByteArray::number(place++), item);
    bson_append_array_end(document, &array);
}

} // namespace

Bson &Bson::text(const char *key, const QString &value)
{
    appendText(m_document, key, value);
    return *this;
}

Bson &Bson::texts(const char *key, const QStringList &values)
{
    appendArray(m_document, key, values,
                [](bson_t *array, const QByteArray &place, const QString &value) {
                    appendText(array, place.constData(), value);
                });
    return *this;
}

Bson &Bson::number(const char *key, qint64 value)
{
    bson_append_int64(m_document, key, WholeKey, value);
    return *this;
}

Bson &Bson::small(const char *key, int value)
{
    bson_append_int32(m_document, key, WholeKey, value);
    return *this;
}

Bson &Bson::flag(const char *key, bool value)
{
    bson_append_bool(m_document, key, WholeKey, value);
    return *this;
}

Bson &Bson::time(const char *key, qint64 value)
{
    bson_append_date_time(m_document, key, WholeKey, value);
    return *this;
}

Bson &Bson::bytes(const char *key, const char *data, qint64 size)
{
    bson_append_binary(m_document, key, WholeKey, BSON_SUBTYPE_BINARY,
                       reinterpret_cast<const uint8_t *>(data), static_cast<uint32_t>(size));
    return *this;
}

Bson &Bson::id(const char *key, const GridFsId &value)
{
    bson_append_value(m_document, key, WholeKey, value.get());
    return *this;
}

Bson &Bson::ids(const char *key, const std::vector<GridFsId> &values)
{
    appendArray(m_document, key, values,
                [](bson_t *array, const QByteArray &place, const GridFsId &value) {
                    bson_append_value(array, place.constData(), WholeKey, value.get());
                });
    return *this;
}

Bson &Bson::document(const char *key, const Bson &value)
{
    bson_append_document(m_document, key, WholeKey, value.get());
    return *this;
}

Bson &Bson::documents(const char *key, const std::vector<Bson> &values)
{
    appendArray(m_document, key, values,
                [](bson_t *array, const QByteArray &place, const Bson &value) {
                    bson_append_document(array, place.constData(), WholeKey, value.get());
                });
    return *this;
}

} // namespace KODMS::Services
