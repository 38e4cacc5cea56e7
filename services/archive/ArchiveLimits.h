// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/notices/Outcome.h"

namespace KODMS::Services {

/// How many bytes may come out of an archive of that size.
qint64 allowedBytes(qint64 archiveSize, const LimitSettings &limits);

/// The refusals; `entry` is the one at which the limit was passed.
Outcome tooManyEntries(const QString &entry, qint64 limit);
Outcome tooManyBytes(const QString &entry, qint64 limit);

} // namespace KODMS::Services
