// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"
#include "services/records/Actor.h"

#include <QDateTime>

#include <functional>

namespace KODMS::Services {

class Database;

/// Checks a login name and a password against the users of a database. Wrong
/// passwords in a row are counted there, so that a restart does not forget them.
class Authenticator {
public:
    using Clock = std::function<QDateTime()>;

    explicit Authenticator(Database &database, Clock clock = QDateTime::currentDateTimeUtc);

    /// The actor, with their roles. Every way to fail for a wrong name or password
    /// takes as long and says the same. Throws SqlError.
    Result<Actor> check(const QString &loginName, const QString &password);

    /// Seconds to wait after the last of so many failures in a row; 0 = none.
    static int delayAfter(int failures);

private:
    /// What is left of the delay, in seconds.
    int remainingDelay(const QString &key);
    void countFailure(const QString &key, bool isKnown);
    Actor succeed(const QString &key, int userId, const QString &password);

    Database &m_database;
    Clock m_clock;
};

} // namespace KODMS::Services
