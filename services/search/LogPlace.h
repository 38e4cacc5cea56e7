// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <cstdint>

namespace KODMS::Services {

/// How far the log of changes is known.
struct LogPlace {
    std::int64_t newest = 0;    ///< number of the newest entry; 0: there was none
    std::int64_t oldest = 0;    ///< of an empty log, less than 0: the last number given out
    QString mark;               ///< of the newest entry: tells it from one of another history
    QString moment;             ///< of the look, in the engine's own words
    int atWork = 0;             ///< transactions that may still leave entries before the newest one
    QString home;               ///< the history that the log tells
    int generation = unchecked; ///< of the connection whose log is known to tell that history

    static constexpr int unchecked = -1;
};

} // namespace KODMS::Services
