// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/bll/Change.h"

namespace KODMS::Services {

/// One reading operation of a table service: for a signed-in person, with one way
/// out for everything that can go wrong. False, one log line and one notice then.
bool readRecords(const Operation &operation, const std::string &record,
                 const std::function<void(Database &)> &body);

} // namespace KODMS::Services
