// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/session/SessionSignals.h"

namespace KODMS::Services {

SessionSignals &SessionSignals::instance()
{
    static SessionSignals hub;
    return hub;
}

} // namespace KODMS::Services
