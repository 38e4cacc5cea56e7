// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/UserAdmin.h"
#include "services/records/bll/UserRecords.h"

namespace KODMS::Services {

/// What a new account or password must be like, wherever it is made.
class UserRules {
public:
    static Outcome checkPassword(const QString &password);
    /// Everything of the account but the password.
    static Outcome checkNames(const NewUser &user);

    /// The account ready to be stored, its password hashed.
    static Result<UserRow> rowFor(const NewUser &user);

private:
    static Outcome checkLoginName(const QString &loginName);
    static Outcome checkRealName(const QString &realName);
};

} // namespace KODMS::Services
