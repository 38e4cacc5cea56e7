// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace KODMS::UI {

// Where the two desks differ when they hand a row to a person: who may do it, and
// which table service is told. The services' results are not looked at; what they
// refuse they report themselves.

/// One row that a person gets.
struct AssignedRow {
    std::string flowGuid;
    int fileId; ///< the original file; 0 on the job-flow desk, whose rows are flows
    int userId; ///< who assigns
    int assigneeId;
};

/// Asked afresh with each call. GUI thread.
bool mayAssignPreCheckers();
bool mayAssignExecutors();

void assignPreChecker(const AssignedRow &row);
void reassignPreChecker(const AssignedRow &row);

void assignExecutor(const AssignedRow &row);
void reassignExecutor(const AssignedRow &row);

} // namespace KODMS::UI
