// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::UI {

// What the signed-in user's rights mean on the original-file desk. Every call
// asks the hub afresh. GUI thread.

/// Gets the table of original files; everybody else gets an order history.
bool isPrivileged();

/// Sees the customers' names and levels.
bool seesCustomerNames();

/// The first page shows original files; everybody else's shows the order
/// history, also in the table that isPrivileged() gave another shape.
bool startsWithOrigFiles();

/// May replace and delete original files.
bool mayChangeFiles();

} // namespace KODMS::UI
