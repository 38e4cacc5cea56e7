// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/Invocation.h"
#include "apps/admin/Report.h"

#include <QCommandLineOption>
#include <QList>

namespace KODMS::Admin {

/// One command of the tool. The tool has checked the number of arguments, that the
/// options exist, and fault(), before run() is called.
class Command {
public:
    struct Argument {
        QString name;
        QString description;
    };

    virtual ~Command() = default;

    /// As it is typed, one word or two: "check", "user add".
    virtual QString name() const = 0;
    virtual QString summary() const = 0;

    /// Further sentences for --help; may be empty.
    virtual QString details() const { return {}; }

    virtual QList<Argument> arguments() const { return {}; }

    virtual QList<QCommandLineOption> options() const { return {}; }

    /// Why --config would mean nothing here; empty where it names the installation.
    virtual QString configFault() const { return {}; }

    /// What is wrong with the values that were typed; nothing has been opened yet.
    virtual QString fault(const Invocation &) const { return {}; }

    virtual Report run(const Invocation &invocation) = 0;

protected:
    static QCommandLineOption passwordFileOption();
};

} // namespace KODMS::Admin
