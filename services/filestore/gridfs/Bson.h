// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <bson/bson.h>
#include <utility>
#include <vector>

namespace KODMS::Services {

class GridFsId;

/// A document on its way to the server. Names of fields are literals of ours.
class Bson {
public:
    Bson() : m_document(bson_new()) {}

    Bson(Bson &&other) noexcept : m_document(std::exchange(other.m_document, nullptr)) {}

    ~Bson() { bson_destroy(m_document); }

    Bson(const Bson &) = delete;
    Bson &operator=(const Bson &) = delete;

    Bson &text(const char *key, const QString &value);
    Bson &texts(const char *key, const QStringList &values);
    Bson &number(const char *key, qint64 value);
    Bson &small(const char *key, int value);
    Bson &flag(const char *key, bool value);
    /// Milliseconds since 1970, UTC.
    Bson &time(const char *key, qint64 value);
    Bson &bytes(const char *key, const char *data, qint64 size);
    Bson &id(const char *key, const GridFsId &value);
    Bson &ids(const char *key, const std::vector<GridFsId> &values);
    Bson &document(const char *key, const Bson &value);
    Bson &documents(const char *key, const std::vector<Bson> &values);

    const bson_t *get() const { return m_document; }

private:
    bson_t *m_document;
};

} // namespace KODMS::Services
