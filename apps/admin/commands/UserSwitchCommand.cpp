// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/UserSwitchCommand.h"

#include "services/api/UserAdmin.h"

namespace KODMS::Admin {

QString UserSwitchCommand::name() const
{
    return m_enables ? QStringLiteral("user enable") : QStringLiteral("user disable");
}

QString UserSwitchCommand::summary() const
{
    return m_enables ? QStringLiteral("Let a disabled user sign in again.")
                     : QStringLiteral("Keep a user from signing in.");
}

QList<Command::Argument> UserSwitchCommand::arguments() const
{
    return {{QStringLiteral("LOGIN"), QStringLiteral("The user's login name.")}};
}

Report UserSwitchCommand::work(const Invocation &invocation)
{
    const QString login = invocation.argument(0);
    return Report::of(Services::UserAdmin::setEnabled(login, m_enables),
                      (m_enables ? QStringLiteral("%1 can sign in again")
                                 : QStringLiteral("%1 can no longer sign in"))
                          .arg(login),
                      {{QStringLiteral("login"), login}, {QStringLiteral("enabled"), m_enables}});
}

} // namespace KODMS::Admin
