// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

namespace KODMS::Services {
class Database;
}

namespace KODMS::Tests {

/// Tables, indexes, rules, triggers and views of the open database, each a line, in
/// order. Of two databases of one engine they are the same when the schemas are.
QStringList schemaOf(Services::Database &database);

/// What the database itself finds wrong with it.
QStringList problemsOf(Services::Database &database);

} // namespace KODMS::Tests
