// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/Command.h"

namespace KODMS::Admin {

/// Reads a backup back; the installation must be empty.
class RestoreCommand final : public Command {
public:
    QString name() const override { return QStringLiteral("restore"); }

    QString summary() const override
    {
        return QStringLiteral("Fill an empty installation from a backup.");
    }

    QString details() const override;
    QList<Argument> arguments() const override;
    Report run(const Invocation &invocation) override;
};

} // namespace KODMS::Admin
