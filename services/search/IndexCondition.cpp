// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/search/IndexCondition.h"

#include <algorithm>

namespace KODMS::Services {

bool IndexCondition::operator==(const IndexCondition &other) const
{
    return kind == other.kind && column == other.column && number == other.number &&
           members == other.members && test == other.test && children == other.children;
}

/// One of some alternatives is also one of more.
bool IndexCondition::implies(const IndexCondition &other) const
{
    const auto isAlternative = [&other](const IndexCondition &one) {
        if (other.kind != Kind::Any)
            return one == other;
        return std::find(other.children.begin(), other.children.end(), one) != other.children.end();
    };
    if (kind != Kind::Any)
        return isAlternative(*this);
    return std::all_of(children.begin(), children.end(), isAlternative);
}

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
