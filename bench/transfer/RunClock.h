// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

namespace KODMS::Bench {

/// What one run took, in milliseconds; CPU time of this process and of those that it
/// started and waited for.
struct RunTime {
    double wall = 0;
    double cpu = 0;
    double serverCpu = 0; ///< of the server that it worked with, where there is one of ours
};

/// `serverCpu` tells the server's so far; it may be empty.
RunTime timed(const std::function<void()> &run, const std::function<double()> &serverCpu = {});

/// The most memory that this process has had in RAM so far, in KiB.
long peakMemory();

} // namespace KODMS::Bench
