// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <mongoc/mongoc.h>

namespace KODMS::Services {

/// What the client library says, for people and for the log. `doing` is an English verb,
/// `address` the server without user and password.
Outcome gridFsFailure(const char *doing, const QString &address, const bson_error_t &error);

/// Somebody else has put a document with that key already.
bool isDuplicate(const bson_error_t &error);

} // namespace KODMS::Services
