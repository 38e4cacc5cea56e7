// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/UserRoleCommand.h"

#include "services/api/UserAdmin.h"

#include <QJsonArray>

namespace KODMS::Admin {

using Services::Outcome;
using Services::UserAdmin;

QString UserRoleCommand::details() const
{
    return QStringLiteral("The roles: ") + UserAdmin::roleNames().join(QStringLiteral(", ")) +
           QLatin1Char('.');
}

QList<Command::Argument> UserRoleCommand::arguments() const
{
    return {{QStringLiteral("LOGIN"), QStringLiteral("The user's login name.")}};
}

QList<QCommandLineOption> UserRoleCommand::options() const
{
    return {{QStringLiteral("grant"), QStringLiteral("A role to give; may be given several times."),
             QStringLiteral("ROLE")},
            {QStringLiteral("revoke"),
             QStringLiteral("A role to take away; may be given several times."),
             QStringLiteral("ROLE")}};
}

QString UserRoleCommand::fault(const Invocation &invocation) const
{
    const QStringList roles =
        invocation.values(QStringLiteral("grant")) + invocation.values(QStringLiteral("revoke"));
    for (const QString &role : roles) {
        if (!UserAdmin::roleNames().contains(role))
            return QStringLiteral("there is no role \"%1\"").arg(role);
    }
    return roles.isEmpty() ? QStringLiteral("--grant or --revoke is missing") : QString();
}

Report UserRoleCommand::work(const Invocation &invocation)
{
    const QString login = invocation.argument(0);
    const QStringList grant = invocation.values(QStringLiteral("grant"));
    const QStringList revoke = invocation.values(QStringLiteral("revoke"));
    for (const QString &role : grant) {
        if (const Outcome outcome = UserAdmin::grantRole(login, role); !outcome)
            return Report::failure(outcome.text);
    }
    for (const QString &role : revoke) {
        if (const Outcome outcome = UserAdmin::revokeRole(login, role); !outcome)
            return Report::failure(outcome.text);
    }
    return Report::success({QStringLiteral("The roles of %1 are changed").arg(login)},
                           {{QStringLiteral("login"), login},
                            {QStringLiteral("granted"), QJsonArray::fromStringList(grant)},
                            {QStringLiteral("revoked"), QJsonArray::fromStringList(revoke)}});
}

} // namespace KODMS::Admin
