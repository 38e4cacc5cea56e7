// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QString>

namespace KODMS::Robot {

class RequestScanner;

/// What a desk asks for: one job, by a name that it has lower-cased.
struct RobotRequest {
    static constexpr int LongestName = 500;

    QString jobName;
    bool fromWeb = false;

    /// The request in a complete scan. The failure says what is wrong with it: a key too many,
    /// missing, given twice or of another type, another module or message type, a name that is
    /// empty, too long or not plain text, a request from the web for another job than the web's.
    static Services::Result<RobotRequest> read(const RequestScanner &scanned);
};

} // namespace KODMS::Robot
