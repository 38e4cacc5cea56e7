// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

struct sqlite3;

namespace KODMS::Services {

/// Ends a statement that runs longer than the time-out. The engine asks every few
/// thousand steps of its own; one clock serves the connection, and each statement
/// starts it anew.
class SqliteStatementLimit {
public:
    SqliteStatementLimit() = default;

    SqliteStatementLimit(const SqliteStatementLimit &) = delete;
    SqliteStatementLimit &operator=(const SqliteStatementLimit &) = delete;

    /// Serves the connection until it is closed, and has to live that long. It keeps no
    /// pointer to it: a connection may be closed without asking this object.
    void attach(sqlite3 *connection);

    /// 0 = no limit.
    void setTimeout(int milliseconds) { m_timeout = std::chrono::milliseconds(milliseconds); }

    void start();

private:
    static int ask(void *self);

    std::chrono::milliseconds m_timeout{0};
    std::chrono::steady_clock::time_point m_deadline;
};

} // namespace KODMS::Services
