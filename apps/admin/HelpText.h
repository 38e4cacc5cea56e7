// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCommandLineOption>
#include <QList>
#include <QString>

namespace KODMS::Admin {

class Command;
class CommandSet;

/// What --help prints.
class HelpText {
public:
    static QString ofTool(const CommandSet &commands, const QList<QCommandLineOption> &options);
    /// The commands that begin with this word.
    static QString ofGroup(const CommandSet &commands, const QString &group);
    static QString ofCommand(const Command &command, const QList<QCommandLineOption> &options);
};

} // namespace KODMS::Admin
