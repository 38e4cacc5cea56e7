// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/UserAdmin.h"

#include <QVector>

namespace KODMS::Tests {

/// Who works in the house, one account for each part of the work. The robot has an
/// account of its own.
class People {
public:
    static Services::NewUser keeper();   ///< keeps the customers' files: administrator
    static Services::NewUser planner();  ///< gives everybody their work
    static Services::NewUser executor(); ///< prepares jobs
    static Services::NewUser reviewer(); ///< judges what the executor and the robot made

    static QVector<Services::NewUser> all();
};

} // namespace KODMS::Tests
