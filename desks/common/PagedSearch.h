// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/DB_Search.h"

#include <vector>

namespace KODMS::UI {

/// Asks `Service` for the page that `bar` stands on; when that page lies beyond
/// the last one, asks again for the last one. False when the first answer counts
/// no rows at all; `total` counts the rows of all pages. A service that fails
/// looks like one that finds nothing.
template <typename Service, typename Bar, typename Record>
bool queryPage(Bar &bar, std::vector<DataLib::Model::DB_Search> conditions,
               std::vector<Record> &records, int &total)
{
    auto countConditions = conditions;
    bar.setSearchPage(conditions, false);
    Service service;
    service.selectAndCountBySearchModel(conditions, countConditions, records, total);
    if (total == 0)
        return false;
    if (bar.clampPage(total)) {
        records.clear();
        bar.setSearchPage(conditions, false);
        service.selectAndCountBySearchModel(conditions, countConditions, records, total);
    }
    return true;
}

} // namespace KODMS::UI
