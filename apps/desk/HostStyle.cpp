// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/HostStyle.h"

#include "apps/desk/Icons.h"
#include "apps/desk/Theme.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace KODMS::Host {

namespace {

const QColor Outline(0x9a, 0x9a, 0x9a);

QColor outlineFor(const QStyleOption &option)
{
    if (!(option.state & QStyle::State_Enabled))
        return QColor(0x6a, 0x6a, 0x6a);
    return option.state & QStyle::State_HasFocus ? Colour::Link : Outline;
}

void paintBox(QPainter &painter, const QRect &area, const QColor &fill, const QColor &outline)
{
    painter.setPen(QPen(outline, 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(area).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
}

void paintCheckBox(QPainter &painter, const QStyleOption &option)
{
    const bool checked = option.state & QStyle::State_On;
    paintBox(painter, option.rect, checked ? Colour::Selection : Colour::Field, outlineFor(option));
    if (!checked)
        return;
    painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.translate(QRectF(option.rect).center());
    painter.drawPolyline(QPolygonF(QVector<QPointF>{{-3.5, 0.2}, {-1, 2.8}, {3.5, -2.8}}));
}

void paintComboBox(QPainter &painter, const QStyleOptionComboBox &option, const QRect &arrow)
{
    const bool hovered = option.state & QStyle::State_MouseOver;
    paintBox(painter, option.rect, hovered ? QColor(0x6b, 0x6b, 0x6b) : Colour::Raised,
             outlineFor(option));
    painter.setPen(QPen(option.palette.color(QPalette::ButtonText), 1.6, Qt::SolidLine,
                        Qt::RoundCap, Qt::RoundJoin));
    painter.translate(QRectF(arrow).center());
    painter.drawPolyline(QPolygonF(QVector<QPointF>{{-3.5, -1.5}, {0, 2}, {3.5, -1.5}}));
}

} // namespace

HostStyle::HostStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void HostStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option,
                              QPainter *painter, const QWidget *widget) const
{
    if (element != PE_IndicatorCheckBox) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    paintCheckBox(*painter, *option);
    painter->restore();
}

void HostStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                   QPainter *painter, const QWidget *widget) const
{
    const auto *combo = qstyleoption_cast<const QStyleOptionComboBox *>(option);
    if (control != CC_ComboBox || !combo || combo->editable) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    paintComboBox(*painter, *combo,
                  proxy()->subControlRect(CC_ComboBox, combo, SC_ComboBoxArrow, widget));
    painter->restore();
}

QIcon HostStyle::standardIcon(StandardPixmap icon, const QStyleOption *option,
                              const QWidget *widget) const
{
    switch (icon) {
    case SP_MessageBoxInformation:
    case SP_MessageBoxQuestion:
        return Icons::notice(0);
    case SP_MessageBoxWarning:
        return Icons::notice(1);
    case SP_MessageBoxCritical:
        return Icons::notice(2);
    default:
        return QProxyStyle::standardIcon(icon, option, widget);
    }
}

} // namespace KODMS::Host
