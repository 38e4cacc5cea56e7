// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/CommandSet.h"

#include <QCommandLineParser>

namespace KODMS::Admin {

/// Reads the command line, runs the command and writes its report.
class AdminTool {
public:
    /// Returns the process's exit code.
    int run(const QStringList &arguments);

private:
    static QList<QCommandLineOption> toolOptions();
    Report runCommand(Command &command, const QStringList &arguments);
    static QString argumentFault(const Command &command, const QStringList &given);
    int write(const QString &command, const Report &report, bool asJson) const;

    CommandSet m_commands;
};

} // namespace KODMS::Admin
