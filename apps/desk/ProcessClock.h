// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

namespace KODMS::Host {

/// How long this process has existed, the loading of its libraries included.
struct ProcessClock {
    /// Milliseconds; exact to 10 ms on Linux. -1 where the system does not tell.
    static qint64 sinceProcessStart();
};

} // namespace KODMS::Host
