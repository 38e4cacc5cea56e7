// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/admin/AdminSandbox.h"

namespace KODMS::Tests {

// A program is not given a console or an interruption by another here: its tests skip.

bool AdminSandbox::hasTerminals()
{
    return false;
}

AdminRun AdminSandbox::runOnTerminal(const QStringList &, const QByteArray &, QByteArray *) const
{
    return {};
}

AdminRun AdminSandbox::interruptAtQuestion(const QStringList &) const
{
    return {};
}

AdminRun AdminSandbox::runAndInterrupt(const QStringList &, int) const
{
    return {};
}

AdminRun AdminSandbox::runInterrupted(const QStringList &, const std::function<void()> &) const
{
    return {};
}

} // namespace KODMS::Tests
