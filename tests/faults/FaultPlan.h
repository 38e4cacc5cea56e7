// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

namespace KODMS::Tests {

enum class FaultLayer { Records, Store };

enum class FaultKind {
    Failed,        ///< one call fails, the next one works again
    Thrown,        ///< one call throws
    KeepsThrowing, ///< so do all that follow
    Lost,          ///< from one call on, nothing can be reached any more
    AnswerLost     ///< the call is carried out, its answer never comes, and nothing follows
};

/// Which call of which layer goes wrong, and how. The records' driver and the file
/// store of the tests ask before each call, from whatever thread it comes.
class FaultPlan {
public:
    /// What is to become of a call.
    enum class Turn { Works, Fails, Throws, IsLost, LosesItsAnswer };

    /// The `step`th call from now on, counted from 1, is the first to go wrong.
    static void arm(FaultLayer layer, FaultKind kind, int step);
    /// Nothing goes wrong from now on, except for what is lost already.
    static void disarm();

    /// True when the planned call came while the plan was armed.
    static bool isHit();

    static Turn next(FaultLayer layer);

    /// The calls of a layer since the plan was armed.
    static int calls(FaultLayer layer);

    /// Called after each commit until it is taken away by an empty one. What it does
    /// itself is none of the calls.
    static void watchCommits(std::function<void()> watcher);
    static void committed();

    FaultPlan() = delete;
};

} // namespace KODMS::Tests
