// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Bench {

/// A server for the GridFS cases, started by scripts/mongo-test-server in a folder of the
/// bench and stopped with this object.
class MongoServer {
public:
    explicit MongoServer(const QString &folder);
    ~MongoServer();
    MongoServer(const MongoServer &) = delete;
    MongoServer &operator=(const MongoServer &) = delete;

    /// Empty when there is none; then reason() says why.
    const QString &uri() const { return m_uri; }

    const QString &reason() const { return m_reason; }

    /// The CPU time that it has had so far, in milliseconds; 0 when it was not started here.
    double cpu() const;

private:
    QString m_folder;
    QString m_uri;
    QString m_reason;
};

} // namespace KODMS::Bench
