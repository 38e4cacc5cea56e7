// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/CheckCommand.h"

#include "apps/admin/ConsoleProgress.h"
#include "services/api/StoreCheck.h"

#include <QJsonArray>

namespace KODMS::Admin {

using Services::CheckFinding;
using Services::CheckOptions;
using Services::CheckReport;
using Services::Result;

QString CheckCommand::details() const
{
    return QStringLiteral("Reads every stored file and compares its SHA-256, looks for records "
                          "without a file and for files without a record. Ends with 3 when it "
                          "found something that stays.");
}

QList<QCommandLineOption> CheckCommand::options() const
{
    QList<QCommandLineOption> all{
        {QStringLiteral("repair"),
         QStringLiteral("Put right what is safe to: remains of what was interrupted.")},
        {QStringLiteral("quick"), QStringLiteral("Do not read what is in the files.")}};
    return all << ActingCommand::options();
}

static QString asLine(const CheckFinding &finding)
{
    const QString mark = finding.isRepaired  ? QStringLiteral("repaired")
                         : finding.isProblem ? QStringLiteral("problem")
                                             : QStringLiteral("note");
    return QStringLiteral("%1: %2: %3: %4").arg(mark, finding.kind, finding.name, finding.text);
}

static QJsonObject asJson(const CheckFinding &finding)
{
    return {{QStringLiteral("kind"), finding.kind},
            {QStringLiteral("name"), finding.name},
            {QStringLiteral("text"), finding.text},
            {QStringLiteral("problem"), finding.isProblem},
            {QStringLiteral("repaired"), finding.isRepaired}};
}

static QJsonObject asJson(const CheckReport &report)
{
    QJsonArray findings;
    for (const CheckFinding &finding : report.findings)
        findings << asJson(finding);
    return {{QStringLiteral("clean"), report.isClean()},
            {QStringLiteral("records"), report.records},
            {QStringLiteral("sampleRecords"), report.sampleRecords},
            {QStringLiteral("files"), report.files},
            {QStringLiteral("bytes"), report.bytes},
            {QStringLiteral("filesRead"), report.filesRead},
            {QStringLiteral("findings"), findings}};
}

Report CheckCommand::act(const Invocation &invocation)
{
    CheckOptions options;
    options.repair = invocation.has(QStringLiteral("repair"));
    options.readContents = !invocation.has(QStringLiteral("quick"));
    ConsoleProgress progress(QStringLiteral("Checking"), ConsoleProgress::Unit::Bytes);
    const Result<CheckReport> result = Services::StoreCheck::check(options, &progress);
    if (!result)
        return progress.isCancelled() ? Report::cancelled() : Report::failure(result.text());
    const CheckReport &report = result.value;
    QStringList lines;
    for (const CheckFinding &finding : report.findings)
        lines << asLine(finding);
    lines << QStringLiteral("%1 records of files (%2 more are samples without one), %3 files, %4 "
                            "of them read: %5")
                 .arg(report.records)
                 .arg(report.sampleRecords)
                 .arg(report.files)
                 .arg(report.filesRead)
                 .arg(report.isClean() ? QStringLiteral("clean")
                                       : QStringLiteral("problems found"));
    Report done = Report::success(lines, asJson(report));
    if (!report.isClean())
        done.code = ExitCode::Findings;
    return done;
}

} // namespace KODMS::Admin
