// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/InstalledCommand.h"

namespace KODMS::Admin {

/// List the users and their roles.
class UserListCommand final : public InstalledCommand {
public:
    QString name() const override { return QStringLiteral("user list"); }

    QString summary() const override { return QStringLiteral("List the users and their roles."); }

protected:
    Report work(const Invocation &invocation) override;
};

} // namespace KODMS::Admin
