// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Actor.h"

namespace KODMS::Services {

class Database;

/// True when one of the two views shows the flow to this user. Throws SqlError.
bool isFlowInScope(Database &database, const Actor &actor, int flowId);

} // namespace KODMS::Services
