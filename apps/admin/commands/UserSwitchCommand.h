// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/InstalledCommand.h"

namespace KODMS::Admin {

/// `user disable` and `user enable`: whether a user may sign in.
class UserSwitchCommand final : public InstalledCommand {
public:
    explicit UserSwitchCommand(bool enables) : m_enables(enables) {}

    QString name() const override;
    QString summary() const override;
    QList<Argument> arguments() const override;

protected:
    Report work(const Invocation &invocation) override;

private:
    bool m_enables;
};

} // namespace KODMS::Admin
