// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/BsonView.h"

#include "services/filestore/gridfs/GridFsId.h"

namespace KODMS::Services {

qint64 BsonView::number(const char *key) const
{
    bson_iter_t field;
    const bool found = bson_iter_init_find(&field, m_document, key);
    return found && BSON_ITER_HOLDS_NUMBER(&field) ? bson_iter_as_int64(&field) : -1;
}

qint64 BsonView::time(const char *key) const
{
    bson_iter_t field;
    const bool found = bson_iter_init_find(&field, m_document, key);
    return found && BSON_ITER_HOLDS_DATE_TIME(&field) ? bson_iter_date_time(&field) : -1;
}

QString BsonView::text(const char *key) const
{
    bson_iter_t field;
    if (!bson_iter_init_find(&field, m_document, key) || !BSON_ITER_HOLDS_UTF8(&field))
        return {};
    uint32_t length = 0;
    const char *text = bson_iter_utf8(&field, &length);
    return QString::fromUtf8(text, static_cast<int>(length));
}

GridFsId BsonView::id(const char *key) const
{
    bson_iter_t field;
    const bool found = bson_iter_init_find(&field, m_document, key);
    return found ? GridFsId(bson_iter_value(&field)) : GridFsId();
}

BsonView::Bytes BsonView::bytes(const char *key) const
{
    bson_iter_t field;
    if (!bson_iter_init_find(&field, m_document, key) || !BSON_ITER_HOLDS_BINARY(&field))
        return {};
    uint32_t size = 0;
    const uint8_t *data = nullptr;
    bson_iter_binary(&field, nullptr, &size, &data);
    return {reinterpret_cast<const char *>(data), qint64{size}};
}

bool BsonView::openInside(const char *key, bson_t *inner) const
{
    bson_iter_t field;
    if (!bson_iter_init_find(&field, m_document, key) || !BSON_ITER_HOLDS_DOCUMENT(&field))
        return false;
    uint32_t length = 0;
    const uint8_t *data = nullptr;
    bson_iter_document(&field, &length, &data);
    return bson_init_static(inner, data, length);
}

} // namespace KODMS::Services
