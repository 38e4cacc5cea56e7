// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/InstalledCommand.h"

namespace KODMS::Admin {

/// Grant and revoke a user's roles.
class UserRoleCommand final : public InstalledCommand {
public:
    QString name() const override { return QStringLiteral("user role"); }

    QString summary() const override { return QStringLiteral("Grant and revoke a user's roles."); }

    QString details() const override;
    QList<Argument> arguments() const override;
    QList<QCommandLineOption> options() const override;
    QString fault(const Invocation &invocation) const override;

protected:
    Report work(const Invocation &invocation) override;
};

} // namespace KODMS::Admin
