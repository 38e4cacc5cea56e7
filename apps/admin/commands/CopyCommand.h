// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/Command.h"

namespace KODMS::Admin {

/// Moves an installation to another database or file store.
class CopyCommand final : public Command {
public:
    QString name() const override { return QStringLiteral("copy"); }

    QString summary() const override
    {
        return QStringLiteral("Copy an installation into a fresh one, other engines included.");
    }

    QString details() const override;
    QList<QCommandLineOption> options() const override;
    QString configFault() const override;
    QString fault(const Invocation &invocation) const override;
    Report run(const Invocation &invocation) override;
};

} // namespace KODMS::Admin
