// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/RoleSet.h"

namespace KODMS::Services {

/// What a change asks for.
enum class Right {
    ChangeFiles,    ///< intake; delete and replace original files; put and delete in the store
    AssignOrigFile, ///< name the executor of an original file
    AssignPreCheck, ///< name the pre-checker of a flow
    Verdict,        ///< pass or fail a review, stamp its time
    Import,         ///< import a job
    Fetch,          ///< fetch a stored file
    Question,       ///< raise, answer, close a question
    Remark,         ///< change a remark
    Finish,         ///< finish a flow
    RobotState      ///< what only the robot's own account reports
};

/// True when one of the roles carries the right on every record.
bool carriesRight(const RoleSet &roles, Right right);

/// True when everybody has the right on the flows that the views show them.
bool isRightInScope(Right right);

} // namespace KODMS::Services
