// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/RestoreCommand.h"

#include "apps/admin/BackupText.h"
#include "apps/admin/ConsoleProgress.h"
#include "services/api/Backup.h"

namespace KODMS::Admin {

QString RestoreCommand::details() const
{
    return QStringLiteral("The installation that the configuration describes must have neither a "
                          "database nor stored files. Everything is compared with its sums before "
                          "the database appears.");
}

QList<Command::Argument> RestoreCommand::arguments() const
{
    return {{QStringLiteral("FILE"), QStringLiteral("A backup that `kodms-admin backup` wrote.")}};
}

Report RestoreCommand::run(const Invocation &invocation)
{
    const QString file = invocation.argument(0);
    ConsoleProgress progress(QStringLiteral("Reading the backup"), ConsoleProgress::Unit::Bytes);
    const auto summary = Services::Backup::restore(invocation.configPath(), file, &progress);
    if (!summary)
        return backupFailure(file, summary.text());
    return backupReport(QStringLiteral("Restored"), file, summary.value);
}

} // namespace KODMS::Admin
