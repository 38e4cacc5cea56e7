// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/InstalledCommand.h"

namespace KODMS::Admin {

/// A command that only some may give, and so is somebody's: the user named with --login, who
/// gives their password and has their own rights, else whoever runs the tool, as the
/// operator "kodms-admin". The audit names which.
class ActingCommand : public InstalledCommand {
public:
    QList<QCommandLineOption> options() const override;
    QString fault(const Invocation &invocation) const override;

protected:
    Report work(const Invocation &invocation) final;
    virtual Report act(const Invocation &invocation) = 0;
};

} // namespace KODMS::Admin
