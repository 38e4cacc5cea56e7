// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/bll/Change.h"

namespace KODMS::Services {

/// The two assignments of a flow, to an executor and to a pre-checker, follow the
/// same rules.
struct AssignmentKind {
    Right right;
    int FlowRow::*present;    ///< who is assigned; 0: nobody
    const char *setStatement; ///< stores the assignment
};

extern const AssignmentKind origFileAssignment;
extern const AssignmentKind preCheckAssignment;

/// A first assignment of a flow that is assigned already is refused, because its
/// author believed that nobody was; the same person again changes nothing.
void assignFirst(Change &change, const AssignmentKind &kind, const FlowRow &flow, int assigneeId);

/// A reassignment. On a flow that nobody is assigned to it assigns: that is what its
/// author wants, and nobody's assignment is lost.
void assignAgain(Change &change, const AssignmentKind &kind, const FlowRow &flow, int assigneeId);

} // namespace KODMS::Services
