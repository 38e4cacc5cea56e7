// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/ProgramStart.h"

#include <QProcess>

namespace KODMS::UI {

bool startBySystem(const CommandLine &line)
{
    QProcess process;
    process.setProgram(line.program);
    process.setArguments(QProcess::splitCommand(line.arguments));
    return process.startDetached();
}

} // namespace KODMS::UI
