// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ProcessorTime.h"

#include <windows.h>

namespace KODMS::Tests {

namespace {

double seconds(const FILETIME &time)
{
    constexpr double ticks = 1e7;
    constexpr double highPart = 4294967296.0;
    return (time.dwHighDateTime * highPart + time.dwLowDateTime) / ticks;
}

} // namespace

/// The C library's clock counts waiting too.
double processorTime()
{
    FILETIME begin{};
    FILETIME end{};
    FILETIME kernel{};
    FILETIME user{};
    ::GetProcessTimes(::GetCurrentProcess(), &begin, &end, &kernel, &user);
    return seconds(kernel) + seconds(user);
}

} // namespace KODMS::Tests
