// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>

#include <functional>

namespace KODMS::Services {

class Database;

/// A change that an administrator makes: by the signed-in user when there is one,
/// who then needs the administrator's role, else by the operator of the tool.
class AdminChange {
public:
    /// `body` runs in a transaction of the running installation, and is undone when
    /// it fails.
    static Outcome run(const char *action, const QString &record,
                       const std::function<Outcome(AdminChange &)> &body);

    /// Whether such a change may be made, for what needs no transaction. Somebody else is
    /// refused, with log line, notice and audit row. Throws SqlError.
    static Outcome mayAct(const char *action, const QString &record);

    Database &database() { return m_database; }

    void audit(const QString &kind, int id, const QString &name, const QString &before,
               const QString &after);

private:
    AdminChange(Database &database, const char *action, int userId)
        : m_database(database), m_action(action), m_userId(userId)
    {
    }

    Database &m_database;
    const char *m_action;
    int m_userId;
};

} // namespace KODMS::Services
