// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/e2e/DeskUser.h"

#include <QPointer>

#include <functional>
#include <memory>
#include <vector>

namespace KODMS::Tests {

class FaultHouse;

/// Somebody at a desk, with the hand above the button.
struct Scene {
    std::shared_ptr<DeskUser> user;
    std::function<void()> act;
};

/// One thing that is done at a desk, from the first press to the end of all that follows.
struct FaultedOperation {
    const char *name;
    /// What the operation is about, as a query: it tells whether it was done.
    const char *essence;
    std::function<void(FaultHouse &)> prepare; ///< also says who does it
    std::function<Scene(FaultHouse &)> sitDown;
    bool leavesCopies = false; ///< in the staging folder, as the desk always does
    /// Does by hand what may be left besides what the operation leaves on its way, and
    /// calls the function after each.
    std::function<void(FaultHouse &, const std::function<void()> &)> otherEnds{};
    /// The call of the store that makes no difference when it alone fails; 0: none.
    int idleStoreCall = 0;
};

const std::vector<FaultedOperation> &faultedOperations();

} // namespace KODMS::Tests
