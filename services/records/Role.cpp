// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/Role.h"

namespace KODMS::Services {

const std::vector<Role> &allRoles()
{
    static const std::vector<Role> roles{
        Role::Admin,          Role::PreProcess,      Role::PreCheckAssign,
        Role::TestAdmin,      Role::CheckAuthority,  Role::OrigFileUpdate,
        Role::OrigFileAssign, Role::ShowCompanyName, Role::Robot};
    return roles;
}

QString roleName(Role role)
{
    switch (role) {
    case Role::Admin:
        return QStringLiteral("admin");
    case Role::PreProcess:
        return QStringLiteral("pre-process");
    case Role::PreCheckAssign:
        return QStringLiteral("pre-check-assign");
    case Role::TestAdmin:
        return QStringLiteral("test-admin");
    case Role::CheckAuthority:
        return QStringLiteral("check-authority");
    case Role::OrigFileUpdate:
        return QStringLiteral("orig-file-update");
    case Role::OrigFileAssign:
        return QStringLiteral("orig-file-assign");
    case Role::ShowCompanyName:
        return QStringLiteral("show-company-name");
    case Role::Robot:
        return QStringLiteral("robot");
    }
    return {};
}

std::optional<Role> roleFromName(const QString &name)
{
    for (const Role role : allRoles()) {
        if (roleName(role) == name)
            return role;
    }
    return std::nullopt;
}

} // namespace KODMS::Services
