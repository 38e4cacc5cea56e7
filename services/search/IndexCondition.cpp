// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/IndexCondition.h"

namespace KODMS::Services {

int IndexCondition::cost() const
{
    int total = 0;
    switch (kind) {
    case Kind::Everything:
    case Kind::Nothing:
        return 0;
    case Kind::Id:
    case Kind::Number:
        return 1;
    case Kind::Members:
        return 10;
    case Kind::Text:
        return 50;
    case Kind::IdText:
    case Kind::NumberText:
        return 200;
    case Kind::All:
    case Kind::Any:
        break;
    }
    for (const IndexCondition &child : children)
        total += child.cost();
    return total;
}

} // namespace KODMS::Services
