// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/ProgramStart.h"

#include <utility>

namespace KODMS::UI {

namespace {

ProgramStarter &presentStarter()
{
    static ProgramStarter starter;
    return starter;
}

} // namespace

bool startProgram(const CommandLine &line)
{
    const ProgramStarter &starter = presentStarter();
    return starter ? starter(line) : startBySystem(line);
}

void setProgramStarter(ProgramStarter starter)
{
    presentStarter() = std::move(starter);
}

} // namespace KODMS::UI
