// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "services/notices/Outcome.h"
#include "services/notices/Progress.h"

#include <QString>
#include <QVector>

namespace KODMS::Services {

/// A job that the CAM robot has at hand: one run of it.
struct RobotJob {
    int flowId = 0;
    int stateVersion = 0; ///< a run ends when anybody moves the flow on
    QString flowGuid;
    QString jobName; ///< as the records write it
};

/// What a CAM robot reports, under an account with the role "robot" and no other way. GUI thread.
class KODMS_SERVICES_API RobotWork {
public:
    /// Marks the flow as being at the robot. The name is found without regard to case. Refused,
    /// with a text for people: no such job, several that differ in case only, a state that does
    /// not lead to the robot, a web job whose order is unpaid, an account without the role.
    static Result<RobotJob> take(const QString &jobName);

    /// What the signed-in account took and has not delivered: after a crash, the work to do.
    static Result<QVector<RobotJob>> unfinished();

    /// Stores the result, an archive or a folder (packed as zip), and records it in one step;
    /// then the flow waits for a verdict. The result's base name becomes the flow's original job
    /// name when it has none. Refused when the flow has moved on since the run began; nothing
    /// stays in the store then.
    static Outcome deliver(const RobotJob &job, const QString &path, Progress &progress);
};

} // namespace KODMS::Services
