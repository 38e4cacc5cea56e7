// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/IntakeCommand.h"

#include "apps/admin/ConsoleProgress.h"
#include "services/api/Intake.h"

namespace KODMS::Admin {

using Services::IntakeReceipt;
using Services::IntakeRequest;
using Services::Result;

QString IntakeCommand::details() const
{
    return QStringLiteral("The new job is named after the customer's code and their next serial "
                          "number. A customer that is not known yet is created.");
}

QList<Command::Argument> IntakeCommand::arguments() const
{
    return {{QStringLiteral("FILE|FOLDER"),
             QStringLiteral("An archive (zip, rar, tgz, tar, 7z, kos), or a folder.")}};
}

QList<QCommandLineOption> IntakeCommand::options() const
{
    QList<QCommandLineOption> all{
        {QStringLiteral("customer"),
         QStringLiteral("The customer's code: three letters or digits."), QStringLiteral("CODE")},
        {QStringLiteral("customer-name"),
         QStringLiteral("Short name of a new customer (else the code)."), QStringLiteral("NAME")},
        {QStringLiteral("orig-name"),
         QStringLiteral("Original name of the job (else that of the archive or folder)."),
         QStringLiteral("NAME")},
        {QStringLiteral("description"), QStringLiteral("Description of the file."),
         QStringLiteral("TEXT")},
        {QStringLiteral("tips"), QStringLiteral("Remark on where it came from."),
         QStringLiteral("TEXT")},
        {QStringLiteral("paid"), QStringLiteral("The order is paid already.")},
    };
    return all << ActingCommand::options();
}

QString IntakeCommand::fault(const Invocation &invocation) const
{
    if (!invocation.has(QStringLiteral("customer")))
        return QStringLiteral("--customer is missing");
    return ActingCommand::fault(invocation);
}

Report IntakeCommand::act(const Invocation &invocation)
{
    IntakeRequest request;
    request.path = invocation.argument(0);
    request.customerCode = invocation.value(QStringLiteral("customer"));
    request.customerName = invocation.value(QStringLiteral("customer-name"));
    request.origName = invocation.value(QStringLiteral("orig-name"));
    request.description = invocation.value(QStringLiteral("description"));
    request.tips = invocation.value(QStringLiteral("tips"));
    request.paid = invocation.has(QStringLiteral("paid"));
    ConsoleProgress progress(QStringLiteral("Taking in"), ConsoleProgress::Unit::Bytes);
    const Result<IntakeReceipt> receipt = Services::Intake::take(request, &progress);
    if (!receipt)
        return progress.isCancelled() ? Report::cancelled() : Report::failure(receipt.text());
    return Report::success({QStringLiteral("Job %1").arg(receipt.value.jobName)},
                           {{QStringLiteral("job"), receipt.value.jobName},
                            {QStringLiteral("flowId"), receipt.value.flowId},
                            {QStringLiteral("flowGuid"), receipt.value.flowGuid},
                            {QStringLiteral("storedName"), receipt.value.storedName}});
}

} // namespace KODMS::Admin
