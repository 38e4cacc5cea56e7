// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QTemporaryDir>

namespace KODMS::Tests {

/// A database server of this test alone, which may be killed. Made before the tests'
/// environment is prepared: from then on it is the engine in force.
class OwnServer {
public:
    OwnServer();
    ~OwnServer();

    OwnServer(const OwnServer &) = delete;
    OwnServer &operator=(const OwnServer &) = delete;

    /// `signal`: SIGKILL, or SIGQUIT for a server that ends at once. Returns when it is gone.
    void kill(int signal) const;

    /// Starts it again; returns when it takes connections. From any thread.
    void resume() const;

private:
    void run(const char *command) const;
    qint64 pid() const;

    QTemporaryDir m_folder;
};

} // namespace KODMS::Tests
