// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"

#include <QJsonObject>
#include <QStringList>

#include <mongoc/mongoc.h>

namespace KODMS::Tests {

/// The server's own view of a bucket, through commands in extended JSON: what another
/// client, an accident or an attacker may do to it.
class RawBucket {
public:
    explicit RawBucket(const Services::FileStoreSettings &settings);
    ~RawBucket();
    RawBucket(const RawBucket &) = delete;
    RawBucket &operator=(const RawBucket &) = delete;

    /// `%B` stands for the bucket's name, a single quotation mark for a double one. Fails the test
    /// when the server refuses.
    QJsonObject run(const QByteArray &command) const;
    void drop() const;
    QStringList collections() const;

    /// Of the documents in BUCKET + `part` that match.
    int count(const char *part, const QByteArray &filter = "{}") const;
    /// The first of them; empty when there is none.
    QJsonObject first(const char *part, const QByteArray &filter = "{}") const;
    void insert(const char *part, const QByteArray &document) const;
    /// Returns how many it met.
    int update(const char *part, const QByteArray &filter, const QByteArray &change) const;
    int remove(const char *part, const QByteArray &filter) const;

    mongoc_client_t *client() const { return m_client; }

private:
    QByteArray m_database;
    QByteArray m_bucket;
    mongoc_client_t *m_client;
};

} // namespace KODMS::Tests
