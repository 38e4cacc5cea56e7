// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/InstalledCommand.h"

namespace KODMS::Admin {

/// Give a user a new password.
class UserPasswdCommand final : public InstalledCommand {
public:
    QString name() const override { return QStringLiteral("user passwd"); }

    QString summary() const override { return QStringLiteral("Give a user a new password."); }

    QList<Argument> arguments() const override;
    QList<QCommandLineOption> options() const override;

protected:
    Report work(const Invocation &invocation) override;
};

} // namespace KODMS::Admin
