// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::UI {

/// What was chosen last. The struct gives the plain enumerators, which are used
/// as numbers, a scope.
struct ImportMode {
    enum : int { File, Folder };
};

} // namespace KODMS::UI
