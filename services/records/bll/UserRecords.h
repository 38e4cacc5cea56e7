// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Actor.h"

#include <optional>
#include <vector>

namespace KODMS::Services {

class Database;

struct UserRow {
    int id = 0;
    QString loginName;
    QString realName;
    int department = 0;
    int post = 0;
    QString passwordHash;
    bool disabled = false;
    RoleSet roles;

    Actor actor() const { return {id, loginName, realName, department, post, roles}; }
};

/// The people and their roles, as tables. Asks nobody for rights and writes no
/// audit: its callers do. Everything throws SqlError.
class UserRecords {
public:
    explicit UserRecords(Database &database) : m_database(database) {}

    /// Upper and lower case are one.
    std::optional<UserRow> byLogin(const QString &loginName);
    std::optional<UserRow> byId(int id);
    std::vector<UserRow> all();

    /// Stores user and roles; returns the new id.
    int insert(const UserRow &user);
    void setPasswordHash(int id, const QString &hash);
    void setDisabled(int id, bool disabled);
    void addRole(int id, Role role);
    void removeRole(int id, Role role);
    void stampSignIn(int id);

    /// Enabled administrators besides this user.
    int otherAdmins(int id);

private:
    RoleSet rolesOf(int id);

    Database &m_database;
};

} // namespace KODMS::Services
