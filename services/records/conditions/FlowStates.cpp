// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/conditions/FlowStates.h"

#include <algorithm>
#include <cstring>

namespace KODMS::Services {

namespace {

constexpr int largestStatus = 3;
constexpr int largestFlag = 2;

bool isNamed(const ViewField *field, const char *name)
{
    return std::strcmp(field->name, name) == 0;
}

bool holds(const SearchView &view, const Condition &condition, int status, int flag)
{
    const auto holdsHere = [&](const Condition &child) { return holds(view, child, status, flag); };
    const auto &children = condition.children;
    switch (condition.kind) {
    case Condition::Kind::Everything:
        return true;
    case Condition::Kind::Nothing:
        return false;
    case Condition::Kind::All:
        return std::all_of(children.begin(), children.end(), holdsHere);
    case Condition::Kind::Any:
        return std::any_of(children.begin(), children.end(), holdsHere);
    case Condition::Kind::Test:
        break;
    }
    return condition.number == (isNamed(condition.field, view.status) ? status : flag);
}

} // namespace

bool FlowStates::isAbout(const SearchView &view, const Condition &condition)
{
    if (view.state == nullptr)
        return false;
    if (condition.kind == Condition::Kind::Test)
        return condition.match == Condition::Match::EqualNumber &&
               (isNamed(condition.field, view.status) || isNamed(condition.field, view.flag));
    return !condition.children.empty() &&
           std::all_of(condition.children.begin(), condition.children.end(),
                       [&view](const Condition &child) { return isAbout(view, child); });
}

bool FlowStates::areNeighbours(int code, int next)
{
    return next == code + 1 || (code % 4 == largestFlag && next == code + 2);
}

QVector<int> FlowStates::codes(const SearchView &view, const Condition &condition)
{
    QVector<int> codes;
    for (int status = 0; status <= largestStatus; ++status) {
        for (int flag = 0; flag <= largestFlag; ++flag) {
            if (holds(view, condition, status, flag))
                codes << status * 4 + flag;
        }
    }
    return codes;
}

} // namespace KODMS::Services
