// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

namespace KODMS::Bench {

/// Wall and CPU time of one action, repeated; milliseconds.
class Stopwatch {
public:
    template <typename Action> void measure(Action action)
    {
        start();
        action();
        stop();
    }

    /// A wall time, in milliseconds, that somebody else has measured.
    void add(double wall) { m_wall.push_back(wall); }

    std::size_t count() const { return m_wall.size(); }

    double wallMedian() const { return quantile(m_wall, 0.5); }

    double wall99() const { return quantile(m_wall, 0.99); }

    double cpuMedian() const { return quantile(m_cpu, 0.5); }

    /// CPU time of one repetition.
    double cpuOf(std::size_t repetition) const { return m_cpu[repetition]; }

private:
    void start();
    void stop();
    static double quantile(std::vector<double> values, double share);
    static double wallNow();
    static double cpuNow();

    std::vector<double> m_wall;
    std::vector<double> m_cpu;
    double m_wallStart = 0;
    double m_cpuStart = 0;
};

} // namespace KODMS::Bench
