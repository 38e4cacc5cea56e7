// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"

#include <QString>
#include <QTemporaryDir>

namespace KODMS::Bench {

/// A database server on loopback: of the benchmark's own, stopped with the object, or one that
/// is kept for further runs with what it holds.
class BenchServer {
public:
    /// The folder of the server to keep, started when it does not run; empty for one of its own.
    explicit BenchServer(const QString &keptFolder);
    ~BenchServer();

    BenchServer(const BenchServer &) = delete;
    BenchServer &operator=(const BenchServer &) = delete;

    bool isThere() const { return m_problem.isEmpty(); }

    /// Why there is none.
    const QString &problem() const { return m_problem; }

    /// Of the database for so many flows: empty, or what a former run left on a kept server.
    /// Throws SqlError.
    Services::DatabaseSettings databaseFor(int flows);

private:
    static bool run(const QStringList &arguments);

    bool isKept() const { return m_folder != m_ownFolder.path(); }

    void readFile();

    QTemporaryDir m_ownFolder;
    QString m_folder;
    QString m_problem;
    Services::DatabaseSettings m_settings;
};

} // namespace KODMS::Bench
