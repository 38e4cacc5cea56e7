// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <stdexcept>

namespace KODMS::Bench {

/// Without it there is nothing to measure. Throws std::runtime_error.
inline void mustSucceed(const Services::Outcome &outcome)
{
    if (!outcome)
        throw std::runtime_error(outcome.text.toStdString());
}

} // namespace KODMS::Bench
