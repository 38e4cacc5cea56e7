// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/ProgramStart.h"

#include <QProcess>

#include <utility>

namespace KODMS::UI {

namespace {

ProgramStarter &presentStarter()
{
    static ProgramStarter starter;
    return starter;
}

bool startBySystem(const CommandLine &line)
{
    QProcess process;
    process.setProgram(line.program);
#if defined(Q_OS_WIN)
    process.setNativeArguments(line.arguments);
#else
    process.setArguments(QProcess::splitCommand(line.arguments));
#endif
    return process.startDetached();
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
