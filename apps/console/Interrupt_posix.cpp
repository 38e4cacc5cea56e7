// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/console/Interrupt.h"

#include <csignal>

namespace KODMS::Console {

namespace {

volatile std::sig_atomic_t g_asked = 0;

extern "C" void noteSignal(int)
{
    g_asked = 1;
}

} // namespace

void Interrupt::watch()
{
    struct sigaction action = {};
    action.sa_handler = noteSignal;
    // No SA_RESTART: a prompt that waits for input shall notice.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

bool Interrupt::wasAskedFor()
{
    return g_asked != 0;
}

} // namespace KODMS::Console
