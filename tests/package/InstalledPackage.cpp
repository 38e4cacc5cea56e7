// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/package/InstalledPackage.h"

#include <QProcess>

namespace KODMS::Tests {

bool InstalledPackage::run(const QString &program, const QStringList &arguments, int timeoutMs)
{
    QProcess process;
    QStringList all = QProcess::systemEnvironment();
    all << environment;
    process.setEnvironment(all);
    process.setWorkingDirectory(m_dir.path());
    process.start(program, arguments);
    process.closeWriteChannel();
    const bool finished = process.waitForFinished(timeoutMs);
    output = process.readAllStandardOutput();
    errors = process.readAllStandardError();
    if (!finished)
        errors += "\ntook too long, or could not be started: " + process.errorString().toUtf8();
    return finished && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

const char *InstalledPackage::everythingSaid()
{
    m_everything = output + errors;
    return m_everything.constData();
}

} // namespace KODMS::Tests
