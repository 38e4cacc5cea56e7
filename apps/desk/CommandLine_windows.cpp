// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/CommandLine.h"

#include <windows.h>

#include <shellapi.h>

namespace KODMS::Host {

/// What main() is handed has lost the characters that the system's old code page does not have.
QStringList commandLine(int, char **)
{
    QStringList words;
    int count = 0;
    wchar_t **parts = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    for (int i = 0; parts != nullptr && i < count; ++i)
        words << QString::fromWCharArray(parts[i]);
    ::LocalFree(parts);
    return words;
}

} // namespace KODMS::Host
