// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/UserAddCommand.h"

#include "apps/console/PasswordSource.h"
#include "services/api/UserAdmin.h"

#include <limits>

namespace KODMS::Admin {

using Console::PasswordSource;
using Services::NewUser;
using Services::Result;
using Services::UserAdmin;

QString UserAddCommand::details() const
{
    return QStringLiteral("The roles: ") + UserAdmin::roleNames().join(QStringLiteral(", ")) +
           QStringLiteral(".\nThe desks offer as pre-checkers the users of department 3 with post "
                          "10, as executors those of department 2 with post 6.");
}

QList<Command::Argument> UserAddCommand::arguments() const
{
    return {{QStringLiteral("LOGIN"), QStringLiteral("The new user's login name.")}};
}

QList<QCommandLineOption> UserAddCommand::options() const
{
    return {
        {QStringLiteral("name"), QStringLiteral("Their name as the desks show it."),
         QStringLiteral("NAME")},
        {QStringLiteral("role"), QStringLiteral("A role of theirs; may be given several times."),
         QStringLiteral("ROLE")},
        {QStringLiteral("department"), QStringLiteral("Number of their department."),
         QStringLiteral("NUMBER"), QStringLiteral("0")},
        {QStringLiteral("post"), QStringLiteral("Number of their post."), QStringLiteral("NUMBER"),
         QStringLiteral("0")},
        passwordFileOption(),
    };
}

static Result<qint64> numberOf(const Invocation &invocation, const QString &option)
{
    return invocation.number(option, 0, std::numeric_limits<int>::max());
}

QString UserAddCommand::fault(const Invocation &invocation) const
{
    if (!invocation.has(QStringLiteral("name")))
        return QStringLiteral("--name is missing");
    for (const char *option : {"department", "post"}) {
        const Result<qint64> number = numberOf(invocation, QString::fromLatin1(option));
        if (!number)
            return number.text();
    }
    return {};
}

Report UserAddCommand::work(const Invocation &invocation)
{
    NewUser user{invocation.argument(0),
                 invocation.value(QStringLiteral("name")),
                 QString(),
                 static_cast<int>(numberOf(invocation, QStringLiteral("department")).value),
                 static_cast<int>(numberOf(invocation, QStringLiteral("post")).value),
                 invocation.values(QStringLiteral("role"))};
    if (const Services::Outcome good = UserAdmin::check(user); !good)
        return Report::failure(good.text);
    const Result<QString> password = PasswordSource(invocation.passwordFile())
                                         .chosen(QStringLiteral("Password of the new user:"));
    if (!password)
        return Report::unanswered(password.text());
    user.password = password.value;
    const Result<int> id = UserAdmin::add(user);
    return Report::of(
        id.outcome, QStringLiteral("%1 was added").arg(user.loginName),
        {{QStringLiteral("login"), user.loginName}, {QStringLiteral("id"), id.value}});
}

} // namespace KODMS::Admin
