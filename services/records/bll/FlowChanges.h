// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/bll/Transitions.h"

#include <string>

namespace KODMS::Services {

/// A user and a time as a caller gives them; user 0: leave the pair as it is, empty
/// time: now.
struct StampRequest {
    int userId = 0;
    std::string time;
};

struct StampRequests {
    StampRequest import;
    StampRequest check;
    StampRequest robotCheck;
};

/// Every change of a job flow, as the table services ask for it. False, one log
/// line and one notice when it was refused or failed.
class FlowChanges {
public:
    static bool moveTo(int userId, FlowState to, const std::string &flowGuid);
    static bool finish(const std::string &jobName, FlowState to);
    static bool setVerdict(int userId, int preCheckFlag, int checkFlag, const std::string &jobName,
                           int flowId);
    static bool stamp(const std::string &flowGuid, int actingUserId, const StampRequests &stamps);
    static bool setRemark(int userId, const std::string &remark, const std::string &flowGuid);
    static bool setOrigFile(const std::string &fileGuid, const std::string &flowGuid);
    static bool setLastImport(const std::string &fileGuidOrName, const std::string &flowGuid);
};

} // namespace KODMS::Services
