// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/InitCommand.h"

#include "apps/console/Interrupt.h"
#include "apps/console/PasswordSource.h"
#include "apps/console/Terminal.h"
#include "services/api/InstallationSetup.h"
#include "services/api/ServiceRuntime.h"

namespace KODMS::Admin {

using Console::Interrupt;
using Console::PasswordSource;
using Console::Terminal;
using Services::InstallationSetup;
using Services::Outcome;
using Services::Result;
using Services::ServiceRuntime;

QString InitCommand::summary() const
{
    return QStringLiteral("Make an installation and its first administrator.");
}

QString InitCommand::details() const
{
    return QStringLiteral("Asks for what is not given. There is no default password. An "
                          "installation that exists is left alone.");
}

QList<QCommandLineOption> InitCommand::options() const
{
    return {{QStringLiteral("login"), QStringLiteral("Login name of the first administrator."),
             QStringLiteral("LOGIN")},
            {QStringLiteral("name"), QStringLiteral("Their name as the desks show it."),
             QStringLiteral("NAME")},
            passwordFileOption()};
}

Result<QString> InitCommand::valueOrAsk(const Invocation &invocation, const QString &option,
                                        const QString &question)
{
    if (invocation.has(option))
        return invocation.value(option);
    QString answer;
    if (!Terminal::isInteractive())
        return Outcome::failure(QStringLiteral("--%1 is missing").arg(option));
    if (!Terminal::ask(question, false, &answer))
        return Outcome::failure(QStringLiteral("no answer was given"));
    return answer;
}

/// An option that is missing is a fault of the command line, Ctrl-C at its question is none.
static Report refused(const QString &error)
{
    return Interrupt::wasAskedFor() ? Report::cancelled() : Report::usage(error);
}

Report InitCommand::run(const Invocation &invocation)
{
    const Result<QString> login =
        valueOrAsk(invocation, QStringLiteral("login"),
                   QStringLiteral("Login name of the first administrator:"));
    if (!login)
        return refused(login.text());
    const Result<QString> name = valueOrAsk(invocation, QStringLiteral("name"),
                                            QStringLiteral("Their name as the desks show it:"));
    if (!name)
        return refused(name.text());
    const QString config = invocation.configPath().isEmpty() ? ServiceRuntime::defaultConfigPath()
                                                             : invocation.configPath();
    if (const Outcome good = InstallationSetup::check(config, login.value, name.value); !good)
        return Report::failure(good.text);
    const Result<QString> password =
        PasswordSource(invocation.passwordFile()).chosen(QStringLiteral("Password:"));
    if (!password)
        return Report::unanswered(password.text());
    return Report::of(InstallationSetup::init(config, login.value, name.value, password.value),
                      QStringLiteral("The installation is ready: %1").arg(config),
                      {{QStringLiteral("config"), config}, {QStringLiteral("login"), login.value}});
}

} // namespace KODMS::Admin
