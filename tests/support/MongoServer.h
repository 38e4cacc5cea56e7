// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Tests {

/// The server that CTest has started for the tests of the GridFS store, whose folder
/// KODMS_TEST_MONGO names.
namespace MongoServer {

/// Its address; empty when there is none.
QString uri();

/// Why there is none.
QString reason();

/// Somebody else's server: not to be stopped.
bool isForeign();

/// What CTest is told by: prints the reason and returns the exit code of a skipped test.
int skip();

} // namespace MongoServer

} // namespace KODMS::Tests
