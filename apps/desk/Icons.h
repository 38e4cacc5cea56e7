// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QIcon>

namespace KODMS::Host {

/// The few pictures of the host, painted so that they are sharp at any scale.
struct Icons {
    static QIcon application();

    /// 0 = information (disc), 1 = warning (triangle), 2 = error (diamond): told
    /// apart by shape as well as by colour.
    static QIcon notice(int level);
    static QColor noticeColour(int level);
};

} // namespace KODMS::Host
