// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/search/Stopwatch.h"
#include "services/records/Database.h"

namespace KODMS::Bench {

/// What a new flow costs with the log of changes and without it, by the statements of an
/// intake. Everything is undone: the disk's own time, which would hide the difference, is
/// left out.
class WriteCost {
public:
    explicit WriteCost(Services::Database &database) : m_database(database) {}

    void measure(int rounds);

    double milliseconds() const { return m_logged.cpuMedian() / flows; }

    /// With the log / without it, CPU time, median of the pairs.
    double ratio() const;

private:
    static constexpr int flows = 300;

    void round(Stopwatch &watch, bool isLogged);
    void dropLogTriggers();
    void insertFlow(int number);
    int insertFile(const QString &name);
    int insertJobAndFlow(const QString &name, int serial, int file);
    void insertRow(const QString &name, int serial, int file, int flow);
    void insertRest(const QString &name, int flow);

    Services::Database &m_database;
    Stopwatch m_logged;
    Stopwatch m_plain;
};

} // namespace KODMS::Bench
