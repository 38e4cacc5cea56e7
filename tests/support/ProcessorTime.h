// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::Tests {

/// What this process has computed so far, in seconds; waiting does not count.
double processorTime();

} // namespace KODMS::Tests
