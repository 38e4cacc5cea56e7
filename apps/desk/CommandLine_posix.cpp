// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/CommandLine.h"

namespace KODMS::Host {

QStringList commandLine(int argc, char **argv)
{
    QStringList words;
    for (int i = 0; i < argc; ++i)
        words << QString::fromLocal8Bit(argv[i]);
    return words;
}

} // namespace KODMS::Host
