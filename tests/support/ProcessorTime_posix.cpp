// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ProcessorTime.h"

#include <ctime>

namespace KODMS::Tests {

double processorTime()
{
    return static_cast<double>(std::clock()) / static_cast<double>(CLOCKS_PER_SEC);
}

} // namespace KODMS::Tests
