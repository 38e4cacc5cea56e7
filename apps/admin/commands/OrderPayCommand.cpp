// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/commands/OrderPayCommand.h"

#include "services/api/Orders.h"

namespace KODMS::Admin {

QList<Command::Argument> OrderPayCommand::arguments() const
{
    return {{QStringLiteral("JOB"), QStringLiteral("The job's name, for example web000012.")}};
}

Report OrderPayCommand::act(const Invocation &invocation)
{
    const QString job = invocation.argument(0);
    return Report::of(Services::Orders::pay(job),
                      QStringLiteral("The order of %1 is marked as paid").arg(job),
                      {{QStringLiteral("job"), job}});
}

} // namespace KODMS::Admin
