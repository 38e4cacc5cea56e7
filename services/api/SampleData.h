// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "services/notices/Outcome.h"
#include "services/notices/Progress.h"

#include <QtGlobal>

namespace KODMS::Services {

struct SampleRequest {
    int flows = 200;  ///< 1 to 3,000,000
    quint32 seed = 1; ///< the same seed gives the same data
    /// How many of the flows, the newest, have their files really in the file store,
    /// as small archives; up to SampleData::mostFlowsWithFiles. The records of the
    /// others say of themselves that they have no file, and fetching one fails.
    int withFiles = 0;
};

/// Generated records to try things on and to measure with.
class KODMS_SERVICES_API SampleData {
public:
    static constexpr int mostFlows = 3000000;
    static constexpr int mostFlowsWithFiles = 1000;

    /// Adds customers, people, and flows with all that belongs to them to the
    /// running installation, as one change: a failure adds nothing. 97 of 100 flows
    /// are finished, the rest stands at every other point of a job's life and is
    /// assigned to the accounts that there are. Refused in an installation that
    /// holds real work, and to anybody but the operator and a signed-in administrator. Progress
    /// counts flows.
    static Outcome generate(const SampleRequest &request, Progress &progress);
};

} // namespace KODMS::Services
