// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/ActingCommand.h"

#include "apps/console/PasswordSource.h"
#include "services/api/SignIn.h"

namespace KODMS::Admin {

using Console::PasswordSource;
using Services::Outcome;
using Services::Result;
using Services::SignIn;

QList<QCommandLineOption> ActingCommand::options() const
{
    return {{QStringLiteral("login"),
             QStringLiteral("Act as this user, with their rights, instead of as the operator."),
             QStringLiteral("LOGIN")},
            passwordFileOption()};
}

QString ActingCommand::fault(const Invocation &invocation) const
{
    const bool aimless =
        !invocation.passwordFile().isEmpty() && invocation.value(QStringLiteral("login")).isEmpty();
    return aimless ? QStringLiteral("--password-file goes with --login") : QString();
}

Report ActingCommand::work(const Invocation &invocation)
{
    const QString login = invocation.value(QStringLiteral("login"));
    if (login.isEmpty())
        return act(invocation);
    SignIn::signOut();
    const Result<QString> password = PasswordSource(invocation.passwordFile())
                                         .existing(QStringLiteral("Password of %1:").arg(login));
    if (!password)
        return Report::unanswered(password.text());
    const Outcome signedIn = SignIn::signIn(login, password.value);
    return signedIn ? act(invocation) : Report::failure(signedIn.text);
}

} // namespace KODMS::Admin
