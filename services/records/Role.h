// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace KODMS::Services {

/// What a person may do. Roles imply nothing about each other.
enum class Role {
    Admin,
    PreProcess,
    PreCheckAssign,
    TestAdmin,
    CheckAuthority,
    OrigFileUpdate,
    OrigFileAssign,
    ShowCompanyName,
    Robot
};

/// Every role, in the order above.
const std::vector<Role> &allRoles();

/// The role's name in tables and on the command line, for example "pre-process".
QString roleName(Role role);

/// Nothing when no role has that name.
std::optional<Role> roleFromName(const QString &name);

} // namespace KODMS::Services
