// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/CopyCommand.h"

#include "apps/admin/ConsoleProgress.h"
#include "services/api/InstallationCopy.h"

#include <QJsonArray>
#include <QLocale>

namespace KODMS::Admin {

using Services::CopiedTableProof;
using Services::CopySummary;

namespace {

const QString From = QStringLiteral("from");
const QString To = QStringLiteral("to");

QStringList linesOf(const CopySummary &summary)
{
    QStringList lines;
    for (const CopiedTableProof &table : summary.tables)
        lines << QStringLiteral("%1 %2 rows  %3 = %3")
                     .arg(table.table, -18)
                     .arg(table.rows, 10)
                     .arg(table.sha256);
    lines << QStringLiteral("%1 files (%2), each read back with the SHA-256 of the source")
                 .arg(summary.files)
                 .arg(QLocale::c().formattedDataSize(summary.bytes));
    if (summary.unrecorded > 0)
        lines << QStringLiteral("%1 files that no record names were left behind")
                     .arg(summary.unrecorded);
    return lines << QStringLiteral("Copied; the source is as it was.");
}

QJsonObject dataOf(const CopySummary &summary)
{
    QJsonArray tables;
    for (const CopiedTableProof &table : summary.tables)
        tables << QJsonObject{{QStringLiteral("table"), table.table},
                              {QStringLiteral("rows"), table.rows},
                              {QStringLiteral("sha256"), table.sha256}};
    return {{QStringLiteral("tables"), tables},
            {QStringLiteral("files"), summary.files},
            {QStringLiteral("bytes"), summary.bytes},
            {QStringLiteral("unrecordedFiles"), summary.unrecorded}};
}

} // namespace

QString CopyCommand::details() const
{
    return QStringLiteral(
        "Records and files, users with their passwords included; prints rows and SHA-256 of every "
        "table, read on both sides. Nobody should work meanwhile: what is changed after the start "
        "is not copied.\n"
        "The target has just been set up, or has a configuration file and nothing else. It cannot "
        "be used before the copy is whole; after a failure or Ctrl-C, repeat the command.");
}

QList<QCommandLineOption> CopyCommand::options() const
{
    return {{From, QStringLiteral("Configuration file of the installation to copy; not changed."),
             QStringLiteral("INI")},
            {To, QStringLiteral("Configuration file of the installation to fill."),
             QStringLiteral("INI")}};
}

QString CopyCommand::configFault() const
{
    return QStringLiteral(
        "copy is told both installations by --from and --to; --config does not go with it");
}

QString CopyCommand::fault(const Invocation &invocation) const
{
    return invocation.value(From).isEmpty() || invocation.value(To).isEmpty()
               ? QStringLiteral("copy needs --from INI and --to INI")
               : QString();
}

Report CopyCommand::run(const Invocation &invocation)
{
    ConsoleProgress progress(QStringLiteral("Copying"), ConsoleProgress::Unit::Bytes);
    const auto summary =
        Services::InstallationCopy::copy(invocation.value(From), invocation.value(To), progress);
    if (summary)
        return Report::success(linesOf(summary.value), dataOf(summary.value));
    if (!progress.isCancelled())
        return Report::failure(summary.text());
    return Report::cancelled(QStringLiteral(
        "the source is as it was. The target has none of its records, perhaps some of its files, "
        "and cannot be used: run the same command again, it keeps the files that have arrived"));
}

} // namespace KODMS::Admin
