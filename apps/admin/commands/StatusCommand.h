// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/InstalledCommand.h"

namespace KODMS::Admin {

/// Say what the installation is made of.
class StatusCommand final : public InstalledCommand {
public:
    QString name() const override { return QStringLiteral("status"); }

    QString summary() const override
    {
        return QStringLiteral("Say what the installation is made of.");
    }

protected:
    Report work(const Invocation &invocation) override;
};

} // namespace KODMS::Admin
