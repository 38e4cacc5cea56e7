// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProxyStyle>

namespace KODMS::Host {

/// The base style with check boxes and combo boxes whose outlines and marks are
/// seen on the dark background, at any scale, and message boxes with the host's icons.
class HostStyle : public QProxyStyle {
    Q_OBJECT

public:
    HostStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption *option,
                       const QWidget *widget) const override;
};

} // namespace KODMS::Host
