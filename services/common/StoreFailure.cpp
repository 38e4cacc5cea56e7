// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/common/StoreFailure.h"

#include "services/records/bll/TextArgument.h"

namespace KODMS::Services {

void reportFileFailure(const QLoggingCategory &category, const char *operation,
                       const std::string &name, const Outcome &failure)
{
    if (failure.isCancelled)
        return;
    const QString cause = failure.cause.isEmpty() ? failure.text : failure.cause;
    reportFailure(category, operation, shortText(name), cause, failure.text);
}

} // namespace KODMS::Services
