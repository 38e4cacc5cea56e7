// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/ActingCommand.h"

namespace KODMS::Admin {

/// Stores an archive or folder and makes the job, its flow and its order.
class IntakeCommand final : public ActingCommand {
public:
    QString name() const override { return QStringLiteral("intake"); }

    QString summary() const override
    {
        return QStringLiteral("Take in what a customer sent: a new job.");
    }

    QString details() const override;
    QList<Argument> arguments() const override;
    QList<QCommandLineOption> options() const override;
    QString fault(const Invocation &invocation) const override;

protected:
    Report act(const Invocation &invocation) override;
};

} // namespace KODMS::Admin
