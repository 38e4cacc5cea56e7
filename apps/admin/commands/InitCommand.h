// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/Command.h"

namespace KODMS::Admin {

/// Makes an installation with its first administrator.
class InitCommand final : public Command {
public:
    QString name() const override { return QStringLiteral("init"); }

    QString summary() const override;
    QString details() const override;
    QList<QCommandLineOption> options() const override;
    Report run(const Invocation &invocation) override;

private:
    static Services::Result<QString> valueOrAsk(const Invocation &invocation, const QString &option,
                                                const QString &question);
};

} // namespace KODMS::Admin
