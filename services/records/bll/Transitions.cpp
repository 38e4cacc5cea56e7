// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/Transitions.h"

#include <algorithm>
#include <array>

namespace KODMS::Services {

namespace {

using Answer = Transitions::Answer;

constexpr FlowState Imported{1, 0};
constexpr FlowState ImportFailed{1, 1};
constexpr FlowState ImportPassed{1, 2};
constexpr FlowState AtRobot{2, 0};
constexpr FlowState RobotFailed{2, 1};
constexpr FlowState RobotPassed{2, 2};

bool isOneOf(FlowState state, std::initializer_list<FlowState> states)
{
    return std::find(states.begin(), states.end(), state) != states.end();
}

/// One kind of step. The answers are asked in the order of the members, so that
/// what a refusal names is the first thing that stands in the way.
struct Step {
    bool (*leadsTo)(FlowState);
    bool (*startsFrom)(FlowState from, FlowState to);
    bool (*isReady)(const FlowFacts &);
    bool (*isFor)(const FlowVisitor &);
};

bool isUnfinished(FlowState from, FlowState)
{
    return !(from == Transitions::Finished);
}

bool always(const FlowFacts &)
{
    return true;
}

bool isReviewer(const FlowVisitor &who)
{
    return who.roles.hasAnyOf({Role::Admin, Role::CheckAuthority});
}

const Step importOfAJob{[](FlowState to) { return to == Imported; }, isUnfinished, always,
                        [](const FlowVisitor &who) {
                            return who.roles.has(Role::Admin) ||
                                   (who.isInScope &&
                                    (who.isExecutor || who.roles.has(Role::PreProcess)));
                        }};

const Step replacementByKos{[](FlowState to) { return to == ImportPassed; }, isUnfinished,
                            [](const FlowFacts &flow) { return flow.lastImportIsKos; },
                            [](const FlowVisitor &who) {
                                return who.roles.hasAnyOf({Role::Admin, Role::OrigFileUpdate});
                            }};

const Step verdictOnImport{[](FlowState to) {
                               return isOneOf(to, {ImportFailed, ImportPassed});
                           },
                           [](FlowState from, FlowState) {
                               return isOneOf(from, {Imported, ImportFailed, ImportPassed});
                           },
                           always, isReviewer};

const Step robotTakesJob{[](FlowState to) { return to == AtRobot; },
                         [](FlowState from, FlowState) {
                             return isOneOf(from, {ImportPassed, RobotFailed});
                         },
                         always, [](const FlowVisitor &who) { return who.roles.has(Role::Robot); }};

const Step verdictOnResult{
    [](FlowState to) {
        return isOneOf(to, {RobotFailed, RobotPassed});
    },
    [](FlowState from, FlowState) {
        return isOneOf(from, {AtRobot, RobotFailed, RobotPassed});
    },
    [](const FlowFacts &flow) { return flow.hasRobotResult || !(flow.state == AtRobot); },
    isReviewer};

const Step finishing{[](FlowState to) { return to == Transitions::Finished; },
                     [](FlowState from, FlowState) { return from == RobotPassed; }, always,
                     [](const FlowVisitor &who) { return who.isInScope; }};

Answer ask(const Step &step, const FlowFacts &flow, FlowState to, const FlowVisitor &who)
{
    if (!step.leadsTo(to) || !step.startsFrom(flow.state, to))
        return Answer::NotPossible;
    if (!step.isReady(flow))
        return Answer::NotYet;
    return step.isFor(who) ? Answer::Allowed : Answer::NotThisPerson;
}

/// How far a step came: the refusal of the step that came furthest is the one
/// worth telling.
int rank(Answer answer)
{
    switch (answer) {
    case Answer::Allowed:
        return 3;
    case Answer::NotThisPerson:
        return 2;
    case Answer::NotYet:
        return 1;
    case Answer::NotPossible:
        break;
    }
    return 0;
}

} // namespace

Answer Transitions::move(const FlowFacts &flow, FlowState to, const FlowVisitor &who)
{
    Answer best = Answer::NotPossible;
    for (const Step *step :
         {&importOfAJob, &replacementByKos, &verdictOnImport, &robotTakesJob, &verdictOnResult}) {
        const Answer answer = ask(*step, flow, to, who);
        if (rank(answer) > rank(best))
            best = answer;
    }
    return best;
}

Answer Transitions::finish(const FlowFacts &flow, const FlowVisitor &who)
{
    return ask(finishing, flow, Finished, who);
}

Answer Transitions::verdict(const FlowFacts &flow, int flag, const FlowVisitor &who)
{
    const FlowState to{flow.state.status, flag};
    const Answer onImport = ask(verdictOnImport, flow, to, who);
    return onImport != Answer::NotPossible ? onImport : ask(verdictOnResult, flow, to, who);
}

bool Transitions::isReviewed(FlowState state)
{
    return isOneOf(state, {ImportFailed, ImportPassed, RobotFailed, RobotPassed});
}

} // namespace KODMS::Services
