// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>

#include <vector>

namespace KODMS::Services {

struct StoredFileRow;

/// A job that the robot has at hand. The version tells this run from a later one of the same
/// job: whatever moves the flow on ends the run.
struct RobotRun {
    int flowId = 0;
    int stateVersion = 0;
    QString flowGuid;
    QString jobName;
};

/// What the robot's own account changes in a flow. Each failure is said in the log and as a
/// notice too.
class RobotChanges {
public:
    /// Finds the job without regard to case and moves its flow to (2,0). Refused when no job or
    /// more than one has the name, when its state does not lead there, and when it is a web job
    /// whose order is unpaid.
    static Result<RobotRun> take(const QString &jobName);

    /// What this account took and has not delivered, in the order of the flows.
    static Result<std::vector<RobotRun>> unfinished();

    /// Refused when the flow has moved on since the run began. Changes nothing.
    static Outcome mayDeliver(const RobotRun &run);

    /// Records the stored result, which ends the run and opens the flow to a verdict.
    /// `preparedName` becomes the flow's original job name when it has none.
    static Outcome deliver(const RobotRun &run, const StoredFileRow &file,
                           const QString &preparedName);
};

} // namespace KODMS::Services
