// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/NoticeHub.h"
#include "services/notices/Outcome.h"

#include <string>

namespace KODMS::Services {

/// One log line and one notice for a failed operation of the store or of archives;
/// nothing for a cancelled one.
void reportFileFailure(const QLoggingCategory &category, const char *operation,
                       const std::string &name, const Outcome &failure);

} // namespace KODMS::Services
