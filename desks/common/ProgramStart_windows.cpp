// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/ProgramStart.h"

#include <QProcess>

#include <string>

namespace KODMS::UI {

/// The line is handed over as it stands: what puts arguments together sets quotes and blanks of
/// its own.
bool startBySystem(const CommandLine &line)
{
    std::wstring whole = line.program.toStdWString() + L' ' + line.arguments.toStdWString();
    QProcess process;
    process.setProgram(line.program);
    process.setNativeArguments(line.arguments);
    process.setCreateProcessArgumentsModifier(
        [&whole](QProcess::CreateProcessArguments *made) { made->arguments = whole.data(); });
    return process.startDetached();
}

} // namespace KODMS::UI
