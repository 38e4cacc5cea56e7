// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/desk/DeskCases.h"

#include <QFileInfo>
#include <QProcess>

#include <stdexcept>

namespace KODMS::Bench {

namespace {

/// The milliseconds that the host tells.
double oneStart(const QString &program, const QString &configPath)
{
    QProcess host;
    host.start(program,
               {QStringLiteral("--config"), configPath, QStringLiteral("--exit-after-show")});
    if (!host.waitForFinished(60000) || host.exitCode() != 0)
        throw std::runtime_error(program.toStdString() + ": " +
                                 host.readAllStandardError().toStdString());
    bool isNumber = false;
    const double milliseconds = host.readAllStandardOutput().trimmed().toDouble(&isNumber);
    if (!isNumber)
        throw std::runtime_error(program.toStdString() + " told no time");
    return milliseconds;
}

} // namespace

QVector<Measured> measureHostStart(const QString &program, const QString &configPath, int count)
{
    if (!QFileInfo(program).isExecutable())
        return {};
    Measured start{QStringLiteral("cold start of the host to a usable sign-in window"),
                   QStringLiteral("<= 250 ms")};
    for (int i = 0; i < count; ++i)
        start.watch.add(oneStart(program, configPath));
    return {start};
}

} // namespace KODMS::Bench
