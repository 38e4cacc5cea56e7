// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/Command.h"

namespace KODMS::Admin {

QCommandLineOption Command::passwordFileOption()
{
    return {QStringLiteral("password-file"),
            QStringLiteral("Read the password from the first line of FILE (-: standard input) "
                           "instead of asking for it."),
            QStringLiteral("FILE")};
}

} // namespace KODMS::Admin
