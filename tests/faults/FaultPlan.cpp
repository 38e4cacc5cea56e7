// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/faults/FaultPlan.h"

#include <array>
#include <atomic>
#include <mutex>
#include <optional>
#include <utility>

namespace KODMS::Tests {

namespace {

struct Plan {
    FaultLayer layer;
    FaultKind kind;
    int step;
};

std::mutex mutex;
std::optional<Plan> plan;
std::array<int, 2> counts{};
bool hit = false;
std::atomic<bool> isWatching{false};
std::function<void()> commitWatcher;

FaultPlan::Turn turnOf(FaultKind kind, bool isFirst)
{
    using Turn = FaultPlan::Turn;
    switch (kind) {
    case FaultKind::Failed:
        return isFirst ? Turn::Fails : Turn::Works;
    case FaultKind::Thrown:
        return isFirst ? Turn::Throws : Turn::Works;
    case FaultKind::KeepsThrowing:
        return Turn::Throws;
    case FaultKind::Lost:
        return Turn::IsLost;
    case FaultKind::AnswerLost:
        break;
    }
    return isFirst ? Turn::LosesItsAnswer : Turn::IsLost;
}

} // namespace

void FaultPlan::arm(FaultLayer layer, FaultKind kind, int step)
{
    const std::lock_guard<std::mutex> guard(mutex);
    plan = Plan{layer, kind, step};
    counts = {};
    hit = false;
}

void FaultPlan::disarm()
{
    const std::lock_guard<std::mutex> guard(mutex);
    plan.reset();
}

bool FaultPlan::isHit()
{
    const std::lock_guard<std::mutex> guard(mutex);
    return hit;
}

FaultPlan::Turn FaultPlan::next(FaultLayer layer)
{
    const std::lock_guard<std::mutex> guard(mutex);
    if (!plan || isWatching)
        return Turn::Works;
    const int call = ++counts[static_cast<std::size_t>(layer)];
    if (plan->layer != layer || call < plan->step)
        return Turn::Works;
    hit = true;
    return turnOf(plan->kind, call == plan->step);
}

int FaultPlan::calls(FaultLayer layer)
{
    const std::lock_guard<std::mutex> guard(mutex);
    return counts[static_cast<std::size_t>(layer)];
}

void FaultPlan::watchCommits(std::function<void()> watcher)
{
    commitWatcher = std::move(watcher);
}

void FaultPlan::committed()
{
    if (!commitWatcher)
        return;
    isWatching = true;
    commitWatcher();
    isWatching = false;
}

} // namespace KODMS::Tests
