// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/search/PackedColumn.h"

#include <string>
#include <vector>

namespace KODMS::Services {

/// One row on its way into the index. Numbers and texts in the layout's order.
struct IndexRow {
    PackedColumn::Number id = 0;
    PackedColumn::Number time = 0; ///< the first part of the order; ids break ties
    std::vector<PackedColumn::Number> numbers;
    std::vector<std::string> texts;
};

} // namespace KODMS::Services
