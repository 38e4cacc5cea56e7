// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/RoleSet.h"

namespace KODMS::Services {

/// How far a flow is, and the verdict of its last review.
struct FlowState {
    int status = 0;
    int flag = 0;

    bool operator==(const FlowState &other) const
    {
        return status == other.status && flag == other.flag;
    }
};

/// What a transition may depend on besides the state.
struct FlowFacts {
    FlowState state;
    bool lastImportIsKos = false; ///< the last import names a stored "kos" file
    bool hasRobotResult = false;  ///< the robot at work has delivered its result
};

/// The acting user, as seen from the flow.
struct FlowVisitor {
    RoleSet roles;
    bool isInScope = false;  ///< the views show the flow to this user
    bool isExecutor = false; ///< assigned to the flow's original file
};

/// The life of a flow: which state may follow which, and who may cause it.
class Transitions {
public:
    enum class Answer {
        Allowed,
        NotPossible,  ///< no such step from this state
        NotYet,       ///< the step exists, but what it waits for is missing
        NotThisPerson ///< the step exists, but not for this user
    };

    /// Any step but the finish.
    static Answer move(const FlowFacts &flow, FlowState to, const FlowVisitor &who);

    /// The last step; it has a way of its own, so that nobody finishes by accident.
    static Answer finish(const FlowFacts &flow, const FlowVisitor &who);

    /// A review's verdict (flag 1 or 2), which keeps the flow's status.
    static Answer verdict(const FlowFacts &flow, int flag, const FlowVisitor &who);

    /// True for the states that a review leaves behind.
    static bool isReviewed(FlowState state);

    static constexpr FlowState Finished{3, 2};
};

} // namespace KODMS::Services
