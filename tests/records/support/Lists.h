// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/records/support/ViewFixture.h"

namespace KODMS::Tests {

/// As the desks do: the last condition once more, carrying the order.
inline List sorted(List list, int direction = 1)
{
    auto order = list.back();
    order.sortEnabled = 1;
    order.sortField = "Flow_CreateTime";
    order.sortDirection = direction;
    list.push_back(order);
    return list;
}

/// The page window in the last condition.
inline List paged(List list, const std::string &start, const std::string &size)
{
    list.back().pageEnabled = 1;
    list.back().pageStart = start;
    list.back().pageSize = size;
    return list;
}

inline DataLib::Model::DB_Search either(DataLib::Model::DB_Search record)
{
    record.orWithPrevious = 1;
    return record;
}

} // namespace KODMS::Tests
