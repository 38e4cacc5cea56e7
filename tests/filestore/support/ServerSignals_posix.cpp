// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/filestore/support/ServerSignals.h"

#include <csignal>

namespace KODMS::Tests {

void signalServer(qint64 process, ServerSignal signal)
{
    const int number = signal == ServerSignal::Kill   ? SIGKILL
                       : signal == ServerSignal::Stop ? SIGSTOP
                                                      : SIGCONT;
    if (process > 0)
        ::kill(static_cast<pid_t>(process), number);
}

} // namespace KODMS::Tests
