// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/SampleCommand.h"

#include "apps/admin/ConsoleProgress.h"
#include "services/api/SampleData.h"

#include <limits>

namespace KODMS::Admin {

using Services::Outcome;
using Services::Result;
using Services::SampleData;
using Services::SampleRequest;

QString SampleCommand::details() const
{
    return QStringLiteral("97 of 100 flows are finished. The same seed gives the same data. "
                          "Refused where real work is stored.");
}

QList<QCommandLineOption> SampleCommand::options() const
{
    return {{QStringLiteral("flows"), QStringLiteral("How many flows."), QStringLiteral("N")},
            {QStringLiteral("seed"), QStringLiteral("Which of the possible samples (else 1)."),
             QStringLiteral("S"), QStringLiteral("1")},
            {QStringLiteral("files"),
             QStringLiteral("Store a small archive for every record of a file; up to %1 flows.")
                 .arg(SampleData::mostFlowsWithFiles)}};
}

static Result<qint64> flowsOf(const Invocation &invocation)
{
    const bool files = invocation.has(QStringLiteral("files"));
    return invocation.number(QStringLiteral("flows"), 1,
                             files ? SampleData::mostFlowsWithFiles : SampleData::mostFlows);
}

static Result<qint64> seedOf(const Invocation &invocation)
{
    return invocation.number(QStringLiteral("seed"), 0, std::numeric_limits<quint32>::max());
}

QString SampleCommand::fault(const Invocation &invocation) const
{
    const Result<qint64> flows = flowsOf(invocation);
    return flows ? seedOf(invocation).text() : flows.text();
}

Report SampleCommand::work(const Invocation &invocation)
{
    SampleRequest request;
    request.flows = static_cast<int>(flowsOf(invocation).value);
    request.seed = static_cast<quint32>(seedOf(invocation).value);
    request.withFiles = invocation.has(QStringLiteral("files")) ? request.flows : 0;
    ConsoleProgress progress(QStringLiteral("Flows"), ConsoleProgress::Unit::Items);
    const Outcome outcome = SampleData::generate(request, progress);
    if (!outcome && progress.isCancelled())
        return Report::cancelled();
    return Report::of(outcome, QStringLiteral("%1 flows were added").arg(request.flows),
                      {{QStringLiteral("flows"), request.flows},
                       {QStringLiteral("seed"), static_cast<qint64>(request.seed)},
                       {QStringLiteral("storesFiles"), request.withFiles > 0}});
}

} // namespace KODMS::Admin
