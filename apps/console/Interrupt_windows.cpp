// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/console/Interrupt.h"

#include <atomic>

#include <windows.h>

namespace KODMS::Console {

namespace {

std::atomic<bool> g_asked{false};

/// On a thread of the system's. The second time the system ends the process.
BOOL WINAPI noteEvent(DWORD)
{
    return g_asked.exchange(true) ? FALSE : TRUE;
}

} // namespace

void Interrupt::watch()
{
    ::SetConsoleCtrlHandler(&noteEvent, TRUE);
}

bool Interrupt::wasAskedFor()
{
    return g_asked;
}

} // namespace KODMS::Console
