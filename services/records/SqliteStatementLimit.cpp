// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/SqliteStatementLimit.h"

#include <sqlite3.h>

namespace KODMS::Services {

namespace {

constexpr int stepsBetweenQuestions = 20000; // well under a millisecond of work

} // namespace

void SqliteStatementLimit::attach(sqlite3 *connection)
{
    start();
    sqlite3_progress_handler(connection, stepsBetweenQuestions, &SqliteStatementLimit::ask, this);
}

void SqliteStatementLimit::start()
{
    m_deadline = std::chrono::steady_clock::now() + m_timeout;
}

int SqliteStatementLimit::ask(void *self)
{
    const auto *limit = static_cast<const SqliteStatementLimit *>(self);
    if (limit->m_timeout.count() == 0)
        return 0;
    return std::chrono::steady_clock::now() > limit->m_deadline ? 1 : 0;
}

} // namespace KODMS::Services
