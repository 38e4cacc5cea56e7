// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

namespace KODMS::Services {

/// Clears up after something that a person has cancelled: waits a tenth of a second
/// for `work`, which then goes on alone. Removing a large file or thousands of small
/// ones takes seconds on a busy disk. The work must not need anything that could go
/// away meanwhile, and may be cut off when the program ends. Any thread.
void runAside(std::function<void()> work);

} // namespace KODMS::Services
