// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QWidget;

namespace KODMS::Host {

/// Whether rows may move without anybody having asked for it.
struct RefreshMoment {
    /// False while something in the desks is selected or being edited, a menu, a dialog or
    /// another window is open, a mouse button is down, or the services work for a desk.
    static bool isNow(const QWidget &window, const QWidget &desks);
};

} // namespace KODMS::Host
