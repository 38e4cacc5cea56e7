// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/ActingCommand.h"

namespace KODMS::Admin {

/// Looks at records and files, in both directions; may put small things right.
class CheckCommand final : public ActingCommand {
public:
    QString name() const override { return QStringLiteral("check"); }

    QString summary() const override
    {
        return QStringLiteral("Compare the records with the stored files.");
    }

    QString details() const override;
    QList<QCommandLineOption> options() const override;

protected:
    Report act(const Invocation &invocation) override;
};

} // namespace KODMS::Admin
