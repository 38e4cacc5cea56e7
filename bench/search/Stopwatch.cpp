// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/search/Stopwatch.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>

namespace KODMS::Bench {

double Stopwatch::wallNow()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(now).count();
}

double Stopwatch::cpuNow()
{
    return 1000.0 * static_cast<double>(std::clock()) / static_cast<double>(CLOCKS_PER_SEC);
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
