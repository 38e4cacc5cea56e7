// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/RoleSet.h"

#include <QString>

namespace KODMS::Services {

/// Who acts: the signed-in user. `userId` 0: nobody is signed in.
struct Actor {
    int userId = 0;
    QString loginName;
    QString realName;
    int department = 0;
    int post = 0;
    RoleSet roles;
};

} // namespace KODMS::Services
