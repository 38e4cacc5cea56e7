// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/UserRecords.h"

#include "services/records/Database.h"
#include "services/records/TimeText.h"

namespace KODMS::Services {

namespace {

UserRow rowOf(const SqlQuery &query)
{
    UserRow user;
    user.id = query.number("id");
    user.loginName = query.text("login_name");
    user.realName = query.text("real_name");
    user.department = query.number("department");
    user.post = query.number("post");
    user.passwordHash = query.text("password_hash");
    user.disabled = query.number("disabled") != 0;
    return user;
}

} // namespace

std::optional<UserRow> UserRecords::byLogin(const QString &loginName)
{
    SqlQuery query = m_database.query("select_user_by_login");
    query.bind(":login", loginName).exec();
    if (!query.next())
        return std::nullopt;
    UserRow user = rowOf(query);
    user.roles = rolesOf(user.id);
    return user;
}

std::optional<UserRow> UserRecords::byId(int id)
{
    SqlQuery query = m_database.query("select_user_by_id");
    query.bind(":id", id).exec();
    if (!query.next())
        return std::nullopt;
    UserRow user = rowOf(query);
    user.roles = rolesOf(user.id);
    return user;
}

std::vector<UserRow> UserRecords::all()
{
    std::vector<UserRow> users;
    SqlQuery query = m_database.query("select_all_users");
    query.exec();
    while (query.next())
        users.push_back(rowOf(query));
    for (UserRow &user : users)
        user.roles = rolesOf(user.id);
    return users;
}

int UserRecords::insert(const UserRow &user)
{
    SqlQuery query = m_database.query("insert_user");
    query.bind(":login", user.loginName).bind(":real", user.realName);
    query.bind(":department", user.department).bind(":post", user.post);
    query.bind(":hash", user.passwordHash).bind(":time", storedNow()).exec();
    query.next();
    const int id = query.number("id");
    for (const Role role : allRoles()) {
        if (user.roles.has(role))
            addRole(id, role);
    }
    return id;
}

void UserRecords::setPasswordHash(int id, const QString &hash)
{
    m_database.query("update_user_password").bind(":hash", hash).bind(":user", id).exec();
}

void UserRecords::setDisabled(int id, bool disabled)
{
    m_database.query("update_user_disabled")
        .bind(":disabled", disabled ? 1 : 0)
        .bind(":user", id)
        .exec();
}

void UserRecords::addRole(int id, Role role)
{
    m_database.query("insert_user_role").bind(":user", id).bind(":role", roleName(role)).exec();
}

void UserRecords::removeRole(int id, Role role)
{
    m_database.query("delete_user_role").bind(":user", id).bind(":role", roleName(role)).exec();
}

void UserRecords::stampSignIn(int id)
{
    m_database.query("update_user_sign_in").bind(":time", storedNow()).bind(":user", id).exec();
}

int UserRecords::otherAdmins(int id)
{
    SqlQuery query = m_database.query("count_other_admins");
    query.bind(":user", id).exec();
    query.next();
    return query.number("admins");
}

RoleSet UserRecords::rolesOf(int id)
{
    RoleSet roles;
    SqlQuery query = m_database.query("select_user_roles");
    query.bind(":user", id).exec();
    while (query.next()) {
        if (const auto role = roleFromName(query.text("role")))
            roles.insert(*role);
    }
    return roles;
}

} // namespace KODMS::Services
