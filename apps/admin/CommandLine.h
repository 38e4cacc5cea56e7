// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

namespace KODMS::Admin {

class CommandSet;

/// The command's words told apart from the options around them. The tool's own options
/// (--config, --json, ...) may stand before or after the command, the command's own after it.
struct CommandLine {
    QString command;       ///< "user add"; empty when none was typed
    QStringList remaining; ///< the arguments without the command's words, program name first
    QString group;         ///< "user", when no command of the group was typed
    QString error;         ///< not empty: the line cannot be read

    static CommandLine split(const QStringList &arguments, const CommandSet &commands);
};

} // namespace KODMS::Admin
