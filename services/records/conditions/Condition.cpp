// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/conditions/Condition.h"

#include <algorithm>
#include <utility>

namespace KODMS::Services {

namespace {

/// Long groups are not searched for repetitions: that would cost more than it saves.
constexpr std::size_t longestSearchedGroup = 64;

void addOnce(std::vector<Condition> &group, Condition child)
{
    const bool isKnown = group.size() <= longestSearchedGroup &&
                         std::find(group.begin(), group.end(), child) != group.end();
    if (!isKnown)
        group.push_back(std::move(child));
}

/// True when whoever meets `narrow` meets `wide`, because `wide` offers all that
/// `narrow` offers, and more.
bool isImplied(const Condition &wide, const Condition &narrow)
{
    const auto offers = [&wide](const Condition &alternative) {
        return std::find(wide.children.begin(), wide.children.end(), alternative) !=
               wide.children.end();
    };
    if (narrow.kind != Condition::Kind::Any)
        return offers(narrow);
    return narrow.children.size() < wide.children.size() &&
           std::all_of(narrow.children.begin(), narrow.children.end(), offers);
}

/// "(mine or yours) and mine" is "mine": the desks ask for the user's own flows, and
/// the user's scope asks again, more widely.
void dropImplied(std::vector<Condition> &all)
{
    constexpr std::size_t longest = 16;
    if (all.size() > longest)
        return;
    for (std::size_t wide = 0; wide < all.size();) {
        bool isNeedless = false;
        for (std::size_t narrow = 0; narrow < all.size() && !isNeedless; ++narrow)
            isNeedless = narrow != wide && all[wide].kind == Condition::Kind::Any &&
                         all[wide].children.size() <= longest && isImplied(all[wide], all[narrow]);
        if (isNeedless)
            all.erase(all.begin() + static_cast<std::ptrdiff_t>(wide));
        else
            ++wide;
    }
}

/// `neutral` changes nothing in such a group, `decisive` decides it.
Condition makeGroup(Condition::Kind kind, Condition::Kind neutral, Condition::Kind decisive,
                    std::vector<Condition> children)
{
    Condition group;
    group.kind = kind;
    for (Condition &child : children) {
        if (child.kind == neutral)
            continue;
        if (child.kind == decisive) {
            Condition decided;
            decided.kind = decisive;
            return decided;
        }
        if (child.kind != kind) {
            addOnce(group.children, std::move(child));
            continue;
        }
        for (Condition &grandchild : child.children)
            addOnce(group.children, std::move(grandchild));
    }
    if (kind == Condition::Kind::All)
        dropImplied(group.children);
    if (group.children.empty()) {
        group.kind = neutral;
        return group;
    }
    if (group.children.size() == 1) {
        Condition only = std::move(group.children.front());
        return only;
    }
    for (const Condition &child : group.children)
        group.depth = std::max(group.depth, child.depth + 1);
    return group;
}

} // namespace

Condition Condition::nothing()
{
    Condition condition;
    condition.kind = Kind::Nothing;
    return condition;
}

Condition Condition::equalNumber(const ViewField *field, qint64 number)
{
    Condition condition;
    condition.kind = Kind::Test;
    condition.field = field;
    condition.match = Match::EqualNumber;
    condition.number = number;
    return condition;
}

Condition Condition::test(const ViewField *field, Match match, const QString &text)
{
    Condition condition;
    condition.kind = Kind::Test;
    condition.field = field;
    condition.match = match;
    condition.text = text;
    return condition;
}

Condition Condition::all(std::vector<Condition> children)
{
    return makeGroup(Kind::All, Kind::Everything, Kind::Nothing, std::move(children));
}

Condition Condition::any(std::vector<Condition> children)
{
    return makeGroup(Kind::Any, Kind::Nothing, Kind::Everything, std::move(children));
}

bool Condition::operator==(const Condition &other) const
{
    return kind == other.kind && field == other.field && match == other.match &&
           number == other.number && text == other.text && children == other.children;
}

} // namespace KODMS::Services
