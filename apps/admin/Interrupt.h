// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::Admin {

/// Ctrl-C and the termination signal ask the running command to stop; the second
/// one ends the process at once.
class Interrupt {
public:
    static void watch();
    static bool wasAskedFor();
};

} // namespace KODMS::Admin
