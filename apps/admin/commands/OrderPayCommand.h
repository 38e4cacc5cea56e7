// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/ActingCommand.h"

namespace KODMS::Admin {

/// Mark the order of a web job as paid.
class OrderPayCommand final : public ActingCommand {
public:
    QString name() const override { return QStringLiteral("order pay"); }

    QString summary() const override
    {
        return QStringLiteral("Mark the order of a web job as paid.");
    }

    QList<Argument> arguments() const override;

protected:
    Report act(const Invocation &invocation) override;
};

} // namespace KODMS::Admin
