// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/InstalledCommand.h"

namespace KODMS::Admin {

/// Add a user.
class UserAddCommand final : public InstalledCommand {
public:
    QString name() const override { return QStringLiteral("user add"); }

    QString summary() const override { return QStringLiteral("Add a user."); }

    QString details() const override;
    QList<Argument> arguments() const override;
    QList<QCommandLineOption> options() const override;
    QString fault(const Invocation &invocation) const override;

protected:
    Report work(const Invocation &invocation) override;
};

} // namespace KODMS::Admin
