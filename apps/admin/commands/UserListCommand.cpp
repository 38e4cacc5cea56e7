// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/UserListCommand.h"

#include "services/api/UserAdmin.h"

#include <QJsonArray>

namespace KODMS::Admin {

using Services::Result;
using Services::UserAccount;

static QString asLine(const UserAccount &user)
{
    QString line = QStringLiteral("%1  %2").arg(user.loginName, user.realName);
    if (user.department != 0 || user.post != 0)
        line += QStringLiteral("  department %1, post %2").arg(user.department).arg(user.post);
    if (!user.roles.isEmpty())
        line += QStringLiteral("  ") + user.roles.join(QStringLiteral(", "));
    return user.enabled ? line : line + QStringLiteral("  (disabled)");
}

static QJsonObject asJson(const UserAccount &user)
{
    return {{QStringLiteral("id"), user.id},
            {QStringLiteral("login"), user.loginName},
            {QStringLiteral("name"), user.realName},
            {QStringLiteral("department"), user.department},
            {QStringLiteral("post"), user.post},
            {QStringLiteral("enabled"), user.enabled},
            {QStringLiteral("roles"), QJsonArray::fromStringList(user.roles)}};
}

Report UserListCommand::work(const Invocation &)
{
    const Result<QVector<UserAccount>> users = Services::UserAdmin::list();
    if (!users)
        return Report::failure(users.text());
    QStringList lines;
    QJsonArray list;
    for (const UserAccount &user : users.value) {
        lines << asLine(user);
        list << asJson(user);
    }
    return Report::success(lines, {{QStringLiteral("users"), list}});
}

} // namespace KODMS::Admin
