// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/CommandLine.h"
#include "apps/desk/HostApplication.h"
#include "apps/desk/Options.h"

#include <cstdio>

int main(int argc, char **argv)
{
    using namespace KODMS::Host;
    const Options options = Options::parse(commandLine(argc, argv));
    if (!options.error.isEmpty()) {
        std::fprintf(stderr, "kodms-desk: %s\nTry --help.\n", qPrintable(options.error));
        return 2;
    }
    if (options.showVersion) {
        std::printf("kodms-desk %s\n", KODMS_VERSION);
        return 0;
    }
    return HostApplication::run(options, argc, argv);
}
