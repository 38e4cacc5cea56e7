// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/InstalledCommand.h"

namespace KODMS::Admin {

/// Adds generated records to an installation without real work.
class SampleCommand final : public InstalledCommand {
public:
    QString name() const override { return QStringLiteral("sample"); }

    QString summary() const override
    {
        return QStringLiteral("Add generated records, to try things on and to measure with.");
    }

    QString details() const override;
    QList<QCommandLineOption> options() const override;
    QString fault(const Invocation &invocation) const override;

protected:
    Report work(const Invocation &invocation) override;
};

} // namespace KODMS::Admin
