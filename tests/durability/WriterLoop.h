// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/durability/WorkSteps.h"

namespace KODMS::Tests {

/// Changes an installation without pause, and remembers with each change, in its
/// own transaction, the hash of the whole state that it leads to.
class WriterLoop {
public:
    explicit WriterLoop(WorkSteps &steps) : m_steps(steps) {}

    /// Until standard input is closed. Returns the number of changes.
    int run(quint32 seed);

private:
    bool changeAndRemember(QRandomGenerator &random);
    bool deleteOldestIntake();

    WorkSteps &m_steps;
};

} // namespace KODMS::Tests
