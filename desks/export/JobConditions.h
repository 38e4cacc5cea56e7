// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/search/ConditionBuilder.h"

namespace KODMS::UI {

/// Items of the status filter, in order.
struct StatusFilter {
    enum : int { All, AwaitingPreProcess, AwaitingReview, Failed, Passed, Finished, AtRobot };
};

/// The conditions of one item of the status filter; none for "全部".
void appendStatusFilter(ConditionBuilder &conditions, int statusIndex);

/// The bracket that hides flows whose robot result has passed and finished
/// flows: what an ordinary user works on.
void appendStatusScope(ConditionBuilder &conditions);

/// The bracket that leaves the flows of the signed-in user: jobs and flows that
/// he created or is assigned to.
void appendUserScope(ConditionBuilder &conditions);

} // namespace KODMS::UI
