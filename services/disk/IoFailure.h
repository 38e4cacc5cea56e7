// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

namespace KODMS::Services {

/// The failure of a file operation: in people's words, and with the system's own
/// for the log. `error` is an errno value, `doing` an English verb.
Outcome ioFailure(const char *doing, const QString &path, int error);

/// The person at the screen has pressed cancel.
Outcome cancelledFailure();

} // namespace KODMS::Services
