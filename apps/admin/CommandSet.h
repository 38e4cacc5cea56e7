// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/admin/Command.h"

#include <memory>
#include <vector>

namespace KODMS::Admin {

/// Every command of the tool, in the order in which the help lists them.
class CommandSet {
public:
    CommandSet();

    const std::vector<std::unique_ptr<Command>> &all() const { return m_commands; }

    /// Null when there is none of that name.
    Command *find(const QString &name) const;
    /// True when `word` begins the name of commands of two words.
    bool isGroup(const QString &word) const;

private:
    std::vector<std::unique_ptr<Command>> m_commands;
};

} // namespace KODMS::Admin
