// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

namespace KODMS::Bench {

/// Wall and CPU time of one action, repeated; milliseconds. The CPU time is that of this
/// process and of the server's process that works for it.
class Stopwatch {
public:
    template <typename Action> void measure(Action action)
    {
        start();
        action();
        stop();
    }

    /// From now on the CPU time of this process is counted, too; 0: of none.
    static void alsoCount(int process);

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
    static double cpuOfOther();

    std::vector<double> m_wall;
    std::vector<double> m_cpu;
    double m_wallStart = 0;
    double m_cpuStart = 0;
};

} // namespace KODMS::Bench
