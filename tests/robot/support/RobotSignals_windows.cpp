// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/robot/support/RobotProcess.h"

namespace KODMS::Tests {

bool RobotProcess::hasSignals()
{
    return false;
}

void RobotProcess::send(Signal) const {}

} // namespace KODMS::Tests
