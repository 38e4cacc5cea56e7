// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/ui/Import_Info.h"

#include <QSize>

class QTableWidget;

namespace KODMS::UI {

/// The size that an import window has when it is made; afterwards it is the user's.
constexpr QSize ImportWindowSize{600, 400};

/// What an import window is told of the job in this row of a table of job flows.
Import_Info importInfo(const QTableWidget *table, int row);

} // namespace KODMS::UI
