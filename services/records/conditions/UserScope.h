// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Actor.h"
#include "services/records/conditions/Condition.h"
#include "services/records/conditions/SearchView.h"

namespace KODMS::Services {

/// ViewScope as a condition that is added to every list.
namespace UserScope {

Condition of(const SearchView &view, const Actor &actor);

} // namespace UserScope

} // namespace KODMS::Services
