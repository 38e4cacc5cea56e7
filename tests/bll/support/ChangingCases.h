// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/bll/support/RecordsHome.h"

#include <functional>
#include <vector>

namespace KODMS::Tests {

/// One changing operation of the table services: who may call it, told once more
/// here, in the test's own words, and how it is called so that nothing but the
/// right can stand in its way.
struct ChangingCase {
    const char *name;
    int status; ///< where the flow has to stand
    int flag;
    std::vector<Services::Role> always;  ///< may do it to every flow
    std::vector<Services::Role> inScope; ///< may do it to flows in their scope
    bool everybodyInScope;
    bool namesUser; ///< the caller passes the acting user
    std::function<bool(const TestJob &, int user)> call;
    std::function<void(RecordsHome &, const TestJob &)> prepare{};
};

const std::vector<ChangingCase> &changingCases();

} // namespace KODMS::Tests
