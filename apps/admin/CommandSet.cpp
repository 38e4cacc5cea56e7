// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/CommandSet.h"

#include "apps/admin/commands/BackupCommand.h"
#include "apps/admin/commands/CheckCommand.h"
#include "apps/admin/commands/CopyCommand.h"
#include "apps/admin/commands/DemoCommand.h"
#include "apps/admin/commands/InitCommand.h"
#include "apps/admin/commands/IntakeCommand.h"
#include "apps/admin/commands/OrderPayCommand.h"
#include "apps/admin/commands/RestoreCommand.h"
#include "apps/admin/commands/SampleCommand.h"
#include "apps/admin/commands/StatusCommand.h"
#include "apps/admin/commands/UserAddCommand.h"
#include "apps/admin/commands/UserListCommand.h"
#include "apps/admin/commands/UserPasswdCommand.h"
#include "apps/admin/commands/UserRoleCommand.h"
#include "apps/admin/commands/UserSwitchCommand.h"

namespace KODMS::Admin {

CommandSet::CommandSet()
{
    m_commands.push_back(std::make_unique<InitCommand>());
    m_commands.push_back(std::make_unique<StatusCommand>());
    m_commands.push_back(std::make_unique<UserAddCommand>());
    m_commands.push_back(std::make_unique<UserListCommand>());
    m_commands.push_back(std::make_unique<UserPasswdCommand>());
    m_commands.push_back(std::make_unique<UserRoleCommand>());
    m_commands.push_back(std::make_unique<UserSwitchCommand>(false));
    m_commands.push_back(std::make_unique<UserSwitchCommand>(true));
    m_commands.push_back(std::make_unique<IntakeCommand>());
    m_commands.push_back(std::make_unique<OrderPayCommand>());
    m_commands.push_back(std::make_unique<CheckCommand>());
    m_commands.push_back(std::make_unique<BackupCommand>());
    m_commands.push_back(std::make_unique<RestoreCommand>());
    m_commands.push_back(std::make_unique<CopyCommand>());
    m_commands.push_back(std::make_unique<SampleCommand>());
    m_commands.push_back(std::make_unique<DemoCommand>());
}

Command *CommandSet::find(const QString &name) const
{
    for (const auto &command : m_commands) {
        if (command->name() == name)
            return command.get();
    }
    return nullptr;
}

bool CommandSet::isGroup(const QString &word) const
{
    const QString start = word + QLatin1Char(' ');
    for (const auto &command : m_commands) {
        if (command->name().startsWith(start))
            return true;
    }
    return false;
}

} // namespace KODMS::Admin
