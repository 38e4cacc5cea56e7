// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/GridFsId.h"

namespace KODMS::Services {

namespace {

QString asJson(const bson_value_t *value)
{
    bson_t document = BSON_INITIALIZER;
    bson_append_value(&document, "id", -1, value);
    char *json = bson_as_relaxed_extended_json(&document, nullptr);
    const QString text = QString::fromUtf8(json);
    bson_free(json);
    bson_destroy(&document);
    return text;
}

} // namespace

GridFsId::GridFsId(const bson_value_t *value) : m_value(std::make_shared<const Value>(value)) {}

GridFsId GridFsId::newId()
{
    bson_value_t value{};
    value.value_type = BSON_TYPE_OID;
    bson_oid_init(&value.value.v_oid, nullptr);
    return GridFsId(&value);
}

QString GridFsId::text() const
{
    const bson_value_t *value = get();
    if (!value || value->value_type != BSON_TYPE_OID)
        return value ? asJson(value) : QString();
    char digits[25];
    bson_oid_to_string(&value->value.v_oid, digits);
    return QString::fromLatin1(digits);
}

} // namespace KODMS::Services
