// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/bll/Transitions.h"

#include <QString>

namespace KODMS::Services {

class Change;
struct FlowRow;

/// "1,2", as the audit writes a state.
QString stateText(FlowState state);

/// Refuses the running change unless the answer is yes.
void requireStep(Transitions::Answer answer, FlowState from, FlowState to);

/// Writes the new state with its audit row. A robot's earlier result counts no more once the
/// robot has the job again.
void writeFlowState(Change &change, const FlowRow &flow, FlowState to);

} // namespace KODMS::Services
