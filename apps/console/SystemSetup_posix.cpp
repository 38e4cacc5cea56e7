// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/console/SystemSetup.h"

#include <langinfo.h>
#include <sys/stat.h>

#include <clocale>
#include <cstring>

namespace KODMS::Console {

void readAndWriteUtf8()
{
    // Qt and the C library may be of different minds about a shell that says nothing.
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        std::setlocale(LC_CTYPE, "C.UTF-8");
}

void keepOthersOut()
{
    umask(umask(0) | S_IRWXG | S_IRWXO);
}

} // namespace KODMS::Console
