// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <functional>

namespace KODMS::UI {

/// A program and the rest of its command line, to the letter.
struct CommandLine {
    QString program;
    QString arguments;
};

/// Starts a program and says whether it started.
using ProgramStarter = std::function<bool(const CommandLine &)>;

/// Starts the program, found in the search path, and leaves it to itself. Where
/// programs get a command line, they get it as it stands; elsewhere it is taken
/// apart at its blanks, with "..." as one argument. False when there is no such
/// program.
bool startProgram(const CommandLine &line);

/// What startProgram() does unless somebody else does it.
bool startBySystem(const CommandLine &line);

/// Puts another starter in the system's place; an empty one brings it back.
void setProgramStarter(ProgramStarter starter);

} // namespace KODMS::UI
