// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/DemoCommand.h"

#include "apps/admin/ConsoleProgress.h"
#include "apps/console/Interrupt.h"
#include "services/api/InstallationSetup.h"
#include "services/api/SampleData.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

#include <algorithm>

namespace KODMS::Admin {

using Console::Interrupt;
using Services::InstallationSetup;
using Services::Outcome;
using Services::Result;
using Services::SampleAccount;
using Services::SampleData;
using Services::ServiceRuntime;

/// More than the open flows of a sample of the usual size, which stand among the newest.
static constexpr int FlowsWithFiles = 200;

QString DemoCommand::summary() const
{
    return QStringLiteral("Make a sample installation with demo accounts.");
}

QString DemoCommand::details() const
{
    return QStringLiteral("One account for each role and an ordinary one, with passwords made at "
                          "random; they exist in this folder only. The newest %1 "
                          "flows have small files to download.")
        .arg(FlowsWithFiles);
}

QList<Command::Argument> DemoCommand::arguments() const
{
    return {
        {QStringLiteral("FOLDER"), QStringLiteral("Where it is to be; empty or not there yet.")}};
}

QList<QCommandLineOption> DemoCommand::options() const
{
    return {{QStringLiteral("flows"), QStringLiteral("How many flows it holds (else 3000)."),
             QStringLiteral("N"), QStringLiteral("3000")},
            {QStringLiteral("accounts"),
             QStringLiteral("Only name the accounts of the sample installation that is there.")}};
}

static Result<qint64> flowsOf(const Invocation &invocation)
{
    return invocation.number(QStringLiteral("flows"), 1, SampleData::mostFlows);
}

QString DemoCommand::configFault() const
{
    return QStringLiteral("demo writes FOLDER/kodms.ini itself; --config does not go with it");
}

QString DemoCommand::fault(const Invocation &invocation) const
{
    return flowsOf(invocation).text();
}

Report DemoCommand::run(const Invocation &invocation)
{
    const QString folder = QDir(invocation.argument(0)).absolutePath();
    if (invocation.has(QStringLiteral("accounts")))
        return accountsOf(folder);
    if (QFileInfo::exists(InstallationSetup::sampleConfigPath(folder)))
        return Report::failure(QStringLiteral("%1 is not empty").arg(folder)); // removed on failure
    if (const Outcome made = InstallationSetup::createSample(folder); !made)
        return Report::failure(made.text);
    const Outcome filled = fill(folder, static_cast<int>(flowsOf(invocation).value));
    if (filled)
        return accountsOf(folder);
    // It was empty or missing before.
    QDir(folder).removeRecursively();
    return Interrupt::wasAskedFor() ? Report::cancelled() : Report::failure(filled.text);
}

Outcome DemoCommand::fill(const QString &folder, int flows)
{
    ServiceRuntime &services = ServiceRuntime::instance();
    Outcome outcome = services.start(InstallationSetup::sampleConfigPath(folder));
    if (!outcome)
        return outcome;
    Services::SignIn::actAsOperator();
    {
        ConsoleProgress progress(QStringLiteral("Flows"), ConsoleProgress::Unit::Items);
        Services::SampleRequest request;
        request.flows = flows;
        request.withFiles = std::min(flows, FlowsWithFiles);
        outcome = SampleData::generate(request, progress);
    }
    services.stop();
    return outcome;
}

Report DemoCommand::accountsOf(const QString &folder)
{
    const Result<QVector<SampleAccount>> accounts = InstallationSetup::sampleAccounts(folder);
    if (!accounts)
        return Report::failure(accounts.text());
    QStringList lines;
    QJsonArray list;
    for (const SampleAccount &account : accounts.value) {
        const QString roles = account.roles.isEmpty() ? QStringLiteral("ordinary user")
                                                      : account.roles.join(QStringLiteral(", "));
        lines << QStringLiteral("%1  %2  %3")
                     .arg(account.loginName, -20)
                     .arg(account.password, roles);
        list << QJsonObject{{QStringLiteral("login"), account.loginName},
                            {QStringLiteral("password"), account.password},
                            {QStringLiteral("name"), account.realName},
                            {QStringLiteral("roles"), QJsonArray::fromStringList(account.roles)}};
    }
    return Report::success(lines,
                           {{QStringLiteral("folder"), folder},
                            {QStringLiteral("config"), InstallationSetup::sampleConfigPath(folder)},
                            {QStringLiteral("accounts"), list}});
}

} // namespace KODMS::Admin
