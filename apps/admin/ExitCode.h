// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::Admin {

/// What a script can rely on.
enum class ExitCode {
    Success = 0,
    Failed = 1,     ///< said why; nothing half done
    Usage = 2,      ///< the command line was wrong; nothing was begun
    Findings = 3,   ///< `check` ran to its end and found something
    Cancelled = 130 ///< Ctrl-C; said what stands now
};

} // namespace KODMS::Admin
