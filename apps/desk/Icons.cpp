// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/Icons.h"

#include "apps/desk/Theme.h"

#include <QPainter>
#include <QPixmap>
#include <QPolygonF>

namespace KODMS::Host {

namespace {

template <typename Paint> QIcon painted(Paint paint)
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 72, 96}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / 16.0, size / 16.0);
        paint(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

void paintShape(QPainter &painter, int level)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(Icons::noticeColour(level));
    if (level == 1)
        painter.drawPolygon(QPolygonF(QVector<QPointF>{{8, 1.5}, {15.2, 14.5}, {0.8, 14.5}}));
    else if (level >= 2)
        painter.drawPolygon(QPolygonF(QVector<QPointF>{{8, 0.5}, {15.5, 8}, {8, 15.5}, {0.5, 8}}));
    else
        painter.drawEllipse(QPointF(8, 8), 7, 7);
    painter.setBrush(QColor(0x26, 0x26, 0x26));
    const bool dotBelow = level >= 1;
    painter.drawRoundedRect(QRectF(7.1, dotBelow ? 5 : 7, 1.8, 5), 0.8, 0.8);
    painter.drawEllipse(QPointF(8, dotBelow ? 12 : 4.9), 1.05, 1.05);
}

void paintBoard(QPainter &painter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(Colour::Accent);
    painter.drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 3, 3);
    painter.setPen(QPen(Qt::white, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF(QVector<QPointF>{{4, 11.8}, {4, 7}, {7, 4}, {12, 4}}));
    painter.drawPolyline(QPolygonF(QVector<QPointF>{{4, 7}, {8.5, 11.8}, {12, 11.8}}));
    painter.setBrush(Colour::Accent);
    for (const QPointF &pad : {QPointF(4, 11.8), QPointF(12, 4), QPointF(12, 11.8)})
        painter.drawEllipse(pad, 1.4, 1.4);
}

} // namespace

QIcon Icons::application()
{
    return painted(paintBoard);
}

QColor Icons::noticeColour(int level)
{
    if (level <= 0)
        return Colour::Link;
    return level == 1 ? Colour::Caution : Colour::Bad;
}

QIcon Icons::notice(int level)
{
    return painted([level](QPainter &painter) { paintShape(painter, level); });
}

} // namespace KODMS::Host
