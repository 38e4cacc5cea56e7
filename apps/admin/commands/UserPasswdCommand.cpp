// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/UserPasswdCommand.h"

#include "apps/console/PasswordSource.h"
#include "services/api/UserAdmin.h"

namespace KODMS::Admin {

using Console::PasswordSource;

QList<Command::Argument> UserPasswdCommand::arguments() const
{
    return {{QStringLiteral("LOGIN"), QStringLiteral("The user's login name.")}};
}

QList<QCommandLineOption> UserPasswdCommand::options() const
{
    return {passwordFileOption()};
}

Report UserPasswdCommand::work(const Invocation &invocation)
{
    const QString login = invocation.argument(0);
    if (const Services::Outcome known = Services::UserAdmin::checkKnown(login); !known)
        return Report::failure(known.text);
    const Services::Result<QString> password =
        PasswordSource(invocation.passwordFile()).chosen(QStringLiteral("New password:"));
    if (!password)
        return Report::unanswered(password.text());
    return Report::of(Services::UserAdmin::setPassword(login, password.value),
                      QStringLiteral("%1 has a new password").arg(login),
                      {{QStringLiteral("login"), login}});
}

} // namespace KODMS::Admin
