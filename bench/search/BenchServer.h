// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"

#include <QString>
#include <QTemporaryDir>

namespace KODMS::Bench {

/// A database server on loopback, of the benchmark's own, stopped with the object.
class BenchServer {
public:
    BenchServer();
    ~BenchServer();

    BenchServer(const BenchServer &) = delete;
    BenchServer &operator=(const BenchServer &) = delete;

    bool isThere() const { return m_problem.isEmpty(); }

    /// Why there is none.
    const QString &problem() const { return m_problem; }

    /// Of a fresh, empty database on it. Throws SqlError.
    Services::DatabaseSettings freshDatabase();

private:
    static bool run(const QStringList &arguments);
    void readFile();

    QTemporaryDir m_dir;
    QString m_problem;
    Services::DatabaseSettings m_settings;
    int m_databases = 0;
};

} // namespace KODMS::Bench
