// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/InstalledCommand.h"

#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"

namespace KODMS::Admin {

namespace {

/// The running services; they stop with it.
class Installation {
public:
    explicit Installation(const QString &iniPath)
        : m_opened(Services::ServiceRuntime::instance().start(iniPath))
    {
    }

    ~Installation() { Services::ServiceRuntime::instance().stop(); }

    const Services::Outcome &opened() const { return m_opened; }

    Installation(const Installation &) = delete;
    Installation &operator=(const Installation &) = delete;

private:
    Services::Outcome m_opened;
};

} // namespace

Report InstalledCommand::run(const Invocation &invocation)
{
    const Installation installation(invocation.configPath());
    if (!installation.opened())
        return Report::failure(installation.opened().text);
    Services::SignIn::actAsOperator(); // unless the command is told of a user to act as
    return work(invocation);
}

} // namespace KODMS::Admin
