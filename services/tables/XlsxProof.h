// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>

namespace KODMS::Services {

/// Fails unless the workbook can be read to its end and its first sheet has so many
/// rows.
Outcome proveSheet(const QString &path, int rows);

} // namespace KODMS::Services
