// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/robot/support/RobotProcess.h"

#include <csignal>

namespace KODMS::Tests {

bool RobotProcess::hasSignals()
{
    return true;
}

void RobotProcess::send(Signal signal) const
{
    ::kill(static_cast<pid_t>(m_process.processId()),
           signal == Signal::Interruption ? SIGINT : SIGTERM);
}

} // namespace KODMS::Tests
