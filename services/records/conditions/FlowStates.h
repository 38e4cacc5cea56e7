// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/conditions/Condition.h"
#include "services/records/conditions/SearchView.h"

#include <QVector>

namespace KODMS::Services {

/// The pairs of flow status and check flag, of which there are few: a condition
/// on nothing else is worked out for each of them and becomes a set of pairs.
namespace FlowStates {

/// True when the condition asks for the pair alone.
bool isAbout(const SearchView &view, const Condition &condition);

/// The pair at which nearly all flows stand, as status * 4 + flag.
constexpr int finished = 14;

/// True when no pair lies between two.
bool areNeighbours(int code, int next);

/// The pairs that meet such a condition, as status * 4 + flag.
QVector<int> codes(const SearchView &view, const Condition &condition);

} // namespace FlowStates

} // namespace KODMS::Services
