// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/UnixTricks.h"

#include <cstdlib>

#include <windows.h>

namespace KODMS::Tests {

std::optional<int> exitCodeOfCopy(const std::function<int()> &)
{
    return std::nullopt;
}

void endAtOnce(int code)
{
    std::_Exit(code);
}

void killThisProcess()
{
    constexpr UINT killed = 0xf291; // what Qt itself ends processes with
    ::TerminateProcess(::GetCurrentProcess(), killed);
    std::abort(); // never reached
}

bool withoutDescriptors(const std::function<void()> &)
{
    return false;
}

bool runInShell(const QString &, const QString &)
{
    return false;
}

/// Qt would make a file that only the desktop takes for a link.
bool makeLink(const QString &, const QString &)
{
    return false;
}

bool makePipe(const QString &)
{
    return false;
}

} // namespace KODMS::Tests
