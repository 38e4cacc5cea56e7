// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "tests/support/PlainConnection.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace KODMS::Bench {

/// An installation whose records stand on a server that was started for tests, with a
/// database of its own and generated records.
class ScaleInstallation {
public:
    /// `serverFile`: what tests/postgres/server wrote when it started the server.
    /// Throws std::runtime_error.
    ScaleInstallation(const QString &serverFile, int flows);

    QString host() const { return m_server.host; }

    quint16 port() const { return static_cast<quint16>(m_server.port); }

    int serverPid() const { return m_pid; }

    /// Starts the services over `port` and signs in.
    void start(quint16 port);

    /// What somebody else writes: jobs' remarks, over a connection of their own.
    void changeByOthers(int times);

    void endOthers() { m_others.reset(); }

private:
    QString writeConfiguration(quint16 port);
    void generate(int flows);

    QTemporaryDir m_dir;
    Services::DatabaseSettings m_server; ///< of the database there
    int m_pid = 0;
    QString m_password;
    std::unique_ptr<Tests::PlainConnection> m_others; ///< made with the first change
};

} // namespace KODMS::Bench
