// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::Console {

/// Ctrl-C and the termination signal ask the running program to stop; the second
/// one ends the process at once.
class Interrupt {
public:
    static void watch();
    static bool wasAskedFor();
};

} // namespace KODMS::Console
