// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <bson/bson.h>
#include <memory>

namespace KODMS::Services {

/// By what a file and its chunks know each other. Ours are object ids; other clients
/// may use a value of any kind.
class GridFsId {
public:
    GridFsId() = default;
    explicit GridFsId(const bson_value_t *value);

    /// One that nobody else chooses.
    static GridFsId newId();

    bool isNull() const { return !m_value; }

    const bson_value_t *get() const { return m_value ? &m_value->value : nullptr; }

    /// For people and for comparing: the same text for the same id.
    QString text() const;

private:
    struct Value {
        explicit Value(const bson_value_t *from) { bson_value_copy(from, &value); }

        ~Value() { bson_value_destroy(&value); }

        Value(const Value &) = delete;
        Value &operator=(const Value &) = delete;

        bson_value_t value{};
    };

    std::shared_ptr<const Value> m_value;
};

} // namespace KODMS::Services
