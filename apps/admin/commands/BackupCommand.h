// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/ActingCommand.h"

namespace KODMS::Admin {

/// Writes a backup of the running installation.
class BackupCommand final : public ActingCommand {
public:
    QString name() const override { return QStringLiteral("backup"); }

    QString summary() const override
    {
        return QStringLiteral("Write records and files into one file, while desks work.");
    }

    QList<Argument> arguments() const override;

protected:
    Report act(const Invocation &invocation) override;
};

} // namespace KODMS::Admin
