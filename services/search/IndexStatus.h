// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace KODMS::Services {

/// How the index stands.
struct IndexStatus {
    enum class State {
        Off,     ///< not asked for, or not worth it
        Loading, ///< the statements answer
        Ready,
        Failed ///< could not be read; the statements answer, and it is tried again later
    };

    State state = State::Off;
    int flows = 0;
    int origFiles = 0;
    std::int64_t bytes = 0;
    double loadMilliseconds = 0; ///< of the last reading of everything
};

} // namespace KODMS::Services
