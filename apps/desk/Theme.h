// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QPalette>

class QApplication;

namespace KODMS::Host {

/// The dark look that goes with the desks' own style sheets: every control that
/// has no sheet of its own stays readable beside them.
struct Theme {
    static QPalette palette();

    /// Style, palette, fonts and the host's style sheet.
    static void apply(QApplication &app);

    /// WCAG contrast of two opaque colours, 1 to 21.
    static double contrast(const QColor &a, const QColor &b);
};

/// The colours of the host's own windows, by use.
namespace Colour {

inline const QColor Window{0x4b, 0x4b, 0x4b};
inline const QColor Panel{0x44, 0x44, 0x44};
inline const QColor Field{0x33, 0x33, 0x33};
inline const QColor Raised{0x5e, 0x5e, 0x5e};
inline const QColor Text{0xf2, 0xf2, 0xf2};
inline const QColor SubText{0xc9, 0xc9, 0xc9};
inline const QColor Accent{0x27, 0x7a, 0xe7};
inline const QColor Selection{0x1f, 0x66, 0xc7};
inline const QColor Link{0x8f, 0xc1, 0xff};
inline const QColor Good{0x7d, 0xe0, 0x8a};
inline const QColor Caution{0xff, 0xd1, 0x66};
inline const QColor Bad{0xff, 0xa8, 0xa0};

} // namespace Colour

} // namespace KODMS::Host
