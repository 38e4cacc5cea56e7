// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/search/Stopwatch.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <fstream>
#include <string>

namespace KODMS::Bench {

namespace {

int otherProcess = 0;

} // namespace

void Stopwatch::alsoCount(int process)
{
    otherProcess = process;
}

/// The system counts in nanoseconds what a process has run.
double Stopwatch::cpuOfOther()
{
    if (otherProcess == 0)
        return 0;
    constexpr double nanoseconds = 1e6; // in a millisecond
    std::ifstream file("/proc/" + std::to_string(otherProcess) + "/schedstat");
    double ran = 0;
    file >> ran;
    return ran / nanoseconds;
}

double Stopwatch::wallNow()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(now).count();
}

double Stopwatch::cpuNow()
{
    return 1000.0 * static_cast<double>(std::clock()) / static_cast<double>(CLOCKS_PER_SEC) +
           cpuOfOther();
}

void Stopwatch::start()
{
    m_cpuStart = cpuNow();
    m_wallStart = wallNow();
}

void Stopwatch::stop()
{
    m_wall.push_back(wallNow() - m_wallStart);
    m_cpu.push_back(cpuNow() - m_cpuStart);
}

double Stopwatch::quantile(std::vector<double> values, double share)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const double place = std::ceil(share * static_cast<double>(values.size())) - 1;
    return values[static_cast<std::size_t>(std::max(0.0, place))];
}

} // namespace KODMS::Bench
