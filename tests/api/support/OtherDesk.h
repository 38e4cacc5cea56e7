// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace KODMS::Services {
class Database;
}

namespace KODMS::Tests {

/// Another program on the same records: the test's own, started once more.
class OtherDesk {
public:
    /// The unpaid orders of web000001 to web000003.
    static void makeOrders(Services::Database &database);

    /// Has the orders of these jobs paid elsewhere; false when that failed.
    static bool pay(const QString &iniPath, const QStringList &jobs);

    /// For the beginning of main(): when this process is the other program, does its work and
    /// gives its exit code.
    static std::optional<int> workIfAsked();
};

} // namespace KODMS::Tests
