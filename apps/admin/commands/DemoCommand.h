// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/Command.h"

namespace KODMS::Admin {

/// Makes a sample installation with demo accounts, or names the accounts of one.
class DemoCommand final : public Command {
public:
    QString name() const override { return QStringLiteral("demo"); }

    QString summary() const override;
    QString details() const override;
    QList<Argument> arguments() const override;
    QList<QCommandLineOption> options() const override;
    QString configFault() const override;
    QString fault(const Invocation &invocation) const override;
    Report run(const Invocation &invocation) override;

private:
    static Services::Outcome fill(const QString &folder, int flows);
    static Report accountsOf(const QString &folder);
};

} // namespace KODMS::Admin
