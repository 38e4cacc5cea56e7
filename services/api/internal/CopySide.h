// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

namespace KODMS::Services {

/// Says of a failure on which side of a copy it lies; leaves a success alone.
struct CopySide {
    static Outcome source(const Outcome &outcome);
    static Outcome target(const Outcome &outcome);
};

} // namespace KODMS::Services
