// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>

namespace KODMS::Services {

/// Where a fetched file goes: download folder + job name + "." + type, joined
/// plainly as the desks do. Job names come from customers: one that would leave
/// the folder, or that Windows cannot hold, is refused.
Result<QString> fetchTarget(const QString &downloadDir, const QString &jobName,
                            const QString &type);

} // namespace KODMS::Services
