// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/BackupCommand.h"

#include "apps/admin/BackupText.h"
#include "apps/admin/ConsoleProgress.h"
#include "services/api/Backup.h"

namespace KODMS::Admin {

QList<Command::Argument> BackupCommand::arguments() const
{
    return {{QStringLiteral("FILE"), QStringLiteral("The backup to write; must not exist yet.")}};
}

Report BackupCommand::act(const Invocation &invocation)
{
    const QString file = invocation.argument(0);
    ConsoleProgress progress(QStringLiteral("Writing the backup"), ConsoleProgress::Unit::Bytes);
    const auto summary = Services::Backup::backup(file, &progress);
    if (!summary)
        return backupFailure(file, summary.text());
    return backupReport(QStringLiteral("Written and read back:"), file, summary.value);
}

} // namespace KODMS::Admin
