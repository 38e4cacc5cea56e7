// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/Command.h"

namespace KODMS::Admin {

/// A command on an existing installation, whose services run while it works.
class InstalledCommand : public Command {
public:
    Report run(const Invocation &invocation) final;

protected:
    virtual Report work(const Invocation &invocation) = 0;
};

} // namespace KODMS::Admin
