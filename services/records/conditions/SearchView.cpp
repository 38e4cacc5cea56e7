// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/conditions/SearchView.h"

#include <algorithm>

namespace KODMS::Services {

const ViewField *SearchView::field(const std::string &fieldName) const
{
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const ViewField &field) {
        return fieldName == field.name;
    });
    return found == fields.end() ? nullptr : &*found;
}

unsigned SearchView::closure(unsigned tables) const
{
    unsigned all = tables;
    for (auto join = joins.rbegin(); join != joins.rend(); ++join) {
        if ((all & join->bit) != 0)
            all |= join->needs;
    }
    return all;
}

} // namespace KODMS::Services
