// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/robot/RobotAnswer.h"
#include "apps/robot/RobotRequest.h"

#include <functional>

namespace KODMS::Robot {

/// Decides on a request that is in order.
using RequestHandler = std::function<RobotAnswer(const RobotRequest &)>;

/// How the server treats its peers. All times in milliseconds.
struct ConnectionRules {
    enum class Manner {
        Normal, ///< answers at once
        Silent, ///< does its work and never answers
        Slow    ///< answers late, byte by byte
    };

    Manner manner = Manner::Normal;
    int requestLimit = 5000;  ///< from the connection to the complete request
    int answerLimit = 15000;  ///< from there to the last byte of the answer
    int silenceLimit = 60000; ///< how long a silent robot keeps a peer that stays
    int lingerLimit = 2000;   ///< what still comes in behind the answer is thrown away so long
    int slowDelay = 1500;
    int slowByte = 10;
    int mostConnections = 64;
};

} // namespace KODMS::Robot
