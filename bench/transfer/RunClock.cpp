// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/transfer/RunClock.h"

#include <chrono>
#include <sys/resource.h>

namespace KODMS::Bench {

namespace {

double milliseconds(const timeval &time)
{
    return 1000.0 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1000.0;
}

double cpuNow()
{
    double sum = 0;
    for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        getrusage(who, &usage);
        sum += milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
    }
    return sum;
}

} // namespace

RunTime timed(const std::function<void()> &run, const std::function<double()> &serverCpu)
{
    const auto server = [&] { return serverCpu ? serverCpu() : 0.0; };
    const double serverBefore = server();
    const double cpu = cpuNow();
    const auto start = std::chrono::steady_clock::now();
    run();
    const std::chrono::duration<double, std::milli> wall = std::chrono::steady_clock::now() - start;
    return {wall.count(), cpuNow() - cpu, server() - serverBefore};
}

long peakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

} // namespace KODMS::Bench
