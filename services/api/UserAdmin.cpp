// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/UserAdmin.h"

#include "services/api/internal/AdminChange.h"
#include "services/api/internal/UserRules.h"
#include "services/notices/NoticeHub.h"
#include "services/records/Database.h"
#include "services/records/RecordContext.h"
#include "services/session/PasswordHash.h"

#include <QCoreApplication>

#include <algorithm>

namespace KODMS::Services {

namespace {

const QString userKind = QStringLiteral("user");

QString tr(const char *text)
{
    return QCoreApplication::translate("UserAdmin", text);
}

QString rolesText(const RoleSet &roles)
{
    return roles.names().join(QLatin1Char(' '));
}

Outcome nobody(const QString &loginName)
{
    return Outcome::failure(tr("没有登录名为“%1”的用户").arg(loginName));
}

/// Runs `change` on an existing user.
Outcome changeUser(const char *action, const QString &loginName,
                   const std::function<Outcome(AdminChange &, const UserRow &)> &change)
{
    return AdminChange::run(action, loginName, [&](AdminChange &admin) {
        const auto user = UserRecords(admin.database()).byLogin(loginName);
        if (!user)
            return nobody(loginName);
        return change(admin, *user);
    });
}

Outcome changeRole(const char *action, const QString &loginName, const QString &roleText,
                   const std::function<Outcome(AdminChange &, const UserRow &, Role)> &change)
{
    const auto role = roleFromName(roleText);
    if (!role)
        return Outcome::failure(tr("没有名为“%1”的角色").arg(roleText));
    return changeUser(action, loginName, [&](AdminChange &admin, const UserRow &user) {
        return change(admin, user, *role);
    });
}

Outcome keepAnAdmin(AdminChange &admin, const UserRow &user)
{
    if (user.roles.has(Role::Admin) && !user.disabled &&
        UserRecords(admin.database()).otherAdmins(user.id) == 0)
        return Outcome::failure(tr("“%1”是最后一个可用的管理员").arg(user.loginName));
    return Outcome::success();
}

Outcome nameTaken(const QString &loginName)
{
    return Outcome::failure(tr("登录名“%1”已被使用").arg(loginName));
}

UserAccount accountOf(const UserRow &row)
{
    return {row.id,   row.loginName, row.realName,     row.department,
            row.post, !row.disabled, row.roles.names()};
}

Result<bool> isKnown(const QString &loginName)
{
    const auto users = UserAdmin::list();
    if (!users)
        return users.outcome;
    return std::any_of(users.value.begin(), users.value.end(),
                       [&](const UserAccount &account) { return account.loginName == loginName; });
}

} // namespace

QStringList UserAdmin::roleNames()
{
    QStringList names;
    for (const Role role : allRoles())
        names << roleName(role);
    return names;
}

Outcome UserAdmin::check(const NewUser &user)
{
    const Outcome names = UserRules::checkNames(user);
    if (!names)
        return names;
    const auto taken = isKnown(user.loginName);
    if (!taken)
        return taken.outcome;
    return taken.value ? nameTaken(user.loginName) : Outcome::success();
}

Result<int> UserAdmin::add(const NewUser &user)
{
    const auto row = UserRules::rowFor(user);
    if (!row)
        return row.outcome;
    int id = 0;
    const Outcome outcome = AdminChange::run("user.add", user.loginName, [&](AdminChange &admin) {
        UserRecords users(admin.database());
        if (users.byLogin(user.loginName))
            return nameTaken(user.loginName);
        id = users.insert(row.value);
        admin.audit(userKind, id, user.loginName, QString(), rolesText(row.value.roles));
        return Outcome::success();
    });
    if (!outcome)
        return outcome;
    return id;
}

Result<QVector<UserAccount>> UserAdmin::list()
{
    RecordContext *context = RecordContext::current();
    if (!context)
        return Outcome::failure(tr("服务尚未启动"));
    try {
        const Outcome allowed = AdminChange::mayAct("user.list", QString());
        if (!allowed)
            return allowed;
        QVector<UserAccount> accounts;
        for (const UserRow &row : UserRecords(context->database()).all())
            accounts.append(accountOf(row));
        return accounts;
    } catch (const SqlError &error) {
        qCWarning(lcRecords).noquote() << "user.list" << error.logText();
        return Outcome::failure(error.userText());
    }
}

Outcome UserAdmin::checkKnown(const QString &loginName)
{
    const auto known = isKnown(loginName);
    if (!known)
        return known.outcome;
    return known.value ? Outcome::success() : nobody(loginName);
}

Outcome UserAdmin::setPassword(const QString &loginName, const QString &password)
{
    const Outcome usable = UserRules::checkPassword(password);
    if (!usable)
        return usable;
    const QString hash = PasswordHash::make(password);
    if (hash.isEmpty())
        return Outcome::failure(tr("内存不足，无法生成密码"));
    return changeUser("user.passwd", loginName, [&](AdminChange &admin, const UserRow &user) {
        UserRecords(admin.database()).setPasswordHash(user.id, hash);
        admin.database()
            .query("delete_sign_in_failures") // a new password starts with a clean slate
            .bind(":login", user.loginName.toLower())
            .exec();
        admin.audit(userKind, user.id, user.loginName, QString(), QString());
        return Outcome::success();
    });
}

Outcome UserAdmin::grantRole(const QString &loginName, const QString &role)
{
    return changeRole(
        "user.role", loginName, role, [](AdminChange &admin, const UserRow &user, Role granted) {
            if (user.roles.has(granted))
                return Outcome::success();
            RoleSet after = user.roles;
            after.insert(granted);
            UserRecords(admin.database()).addRole(user.id, granted);
            admin.audit(userKind, user.id, user.loginName, rolesText(user.roles), rolesText(after));
            return Outcome::success();
        });
}

Outcome UserAdmin::revokeRole(const QString &loginName, const QString &role)
{
    return changeRole(
        "user.role", loginName, role, [](AdminChange &admin, const UserRow &user, Role revoked) {
            if (!user.roles.has(revoked))
                return Outcome::success();
            if (revoked == Role::Admin) {
                const Outcome kept = keepAnAdmin(admin, user);
                if (!kept)
                    return kept;
            }
            RoleSet after = user.roles;
            after.remove(revoked);
            UserRecords(admin.database()).removeRole(user.id, revoked);
            admin.audit(userKind, user.id, user.loginName, rolesText(user.roles), rolesText(after));
            return Outcome::success();
        });
}

Outcome UserAdmin::setEnabled(const QString &loginName, bool enabled)
{
    return changeUser("user.enable", loginName, [&](AdminChange &admin, const UserRow &user) {
        const Outcome kept = enabled ? Outcome::success() : keepAnAdmin(admin, user);
        if (!kept)
            return kept;
        UserRecords(admin.database()).setDisabled(user.id, !enabled);
        admin.audit(userKind, user.id, user.loginName,
                    user.disabled ? QStringLiteral("disabled") : QStringLiteral("enabled"),
                    enabled ? QStringLiteral("enabled") : QStringLiteral("disabled"));
        return Outcome::success();
    });
}

} // namespace KODMS::Services
