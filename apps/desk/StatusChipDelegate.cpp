// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/StatusChipDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>

namespace KODMS::Host {

namespace {

constexpr int Height = 22;
constexpr int Inset = 6;
constexpr int ShapeSize = 12;

void paintShape(QPainter &painter, const QPointF &centre, StatusChipDelegate::Shape shape)
{
    using Shape = StatusChipDelegate::Shape;
    painter.translate(centre);
    painter.setBrush(shape == Shape::Dot ? painter.pen().brush() : QBrush(Qt::NoBrush));
    switch (shape) {
    case Shape::Dot:
        painter.drawEllipse(QPointF(0, 0), 2.5, 2.5);
        break;
    case Shape::Ring:
        painter.drawEllipse(QPointF(0, 0), 4, 4);
        break;
    case Shape::Square:
        painter.drawRect(QRectF(-3.5, -3.5, 7, 7));
        break;
    case Shape::Cross:
        painter.drawLine(QPointF(-3.5, -3.5), QPointF(3.5, 3.5));
        painter.drawLine(QPointF(-3.5, 3.5), QPointF(3.5, -3.5));
        break;
    case Shape::DoubleTick:
        painter.drawPolyline(QPolygonF(QVector<QPointF>{{-1, 1.5}, {1.5, 4}, {6, -3.5}}));
        [[fallthrough]];
    case Shape::Tick:
        painter.drawPolyline(QPolygonF(QVector<QPointF>{{-5, 0.5}, {-2, 4}, {2.5, -3.5}}));
        break;
    }
    painter.translate(-centre);
}

/// A status is a word. The column holds ids where a desk fills its table with other rows.
bool isStatus(const QString &text)
{
    bool isNumber = false;
    text.toLongLong(&isNumber);
    return !text.isEmpty() && !isNumber;
}

} // namespace

StatusChipDelegate::Chip StatusChipDelegate::chipFor(const QColor &cellColour)
{
    if (cellColour == QColor(Qt::red))
        return {QColor(0xb3, 0x26, 0x1e), Qt::white, Shape::Cross};
    if (cellColour == QColor(Qt::green))
        return {QColor(0x1b, 0x74, 0x30), Qt::white, Shape::Tick};
    if (cellColour == QColor(Qt::darkGreen))
        return {QColor(0x14, 0x53, 0x2d), Qt::white, Shape::DoubleTick};
    if (cellColour == QColor(Qt::blue))
        return {QColor(0x3b, 0x3f, 0x8f), Qt::white, Shape::Square};
    if (cellColour == QColor(Qt::lightGray))
        return {QColor(0x2a, 0x57, 0x8c), Qt::white, Shape::Ring};
    return {QColor(0x2e, 0x2e, 0x2e), Qt::white, Shape::Dot};
}

void StatusChipDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                               const QModelIndex &index) const
{
    if (!isStatus(index.data().toString())) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QString text = cell.text;
    cell.text.clear();
    const QStyle *style = cell.widget ? cell.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    const Chip chip = chipFor(index.data(Qt::ForegroundRole).value<QBrush>().color());
    const int wanted = cell.fontMetrics.horizontalAdvance(text) + ShapeSize + 3 * Inset;
    QRect area = option.rect.adjusted(3, 0, -3, 0);
    area.setWidth(qMin(area.width(), wanted));
    const int height = qMin(qMax(Height, cell.fontMetrics.height() + 2), area.height() - 2);
    area = QRect(area.left(), area.top() + (area.height() - height) / 2, area.width(), height);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(chip.background);
    painter->drawRoundedRect(area, height / 2.0, height / 2.0);
    painter->setPen(QPen(chip.text, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    paintShape(*painter, QPointF(area.left() + Inset + ShapeSize / 2.0, area.center().y() + 0.5),
               chip.shape);
    painter->setFont(cell.font);
    const QRect textArea = area.adjusted(ShapeSize + 2 * Inset, 0, -Inset, 0);
    painter->drawText(textArea, Qt::AlignVCenter | Qt::AlignLeft,
                      cell.fontMetrics.elidedText(text, Qt::ElideRight, textArea.width()));
    painter->restore();
}

QSize StatusChipDelegate::sizeHint(const QStyleOptionViewItem &option,
                                   const QModelIndex &index) const
{
    const QSize plain = QStyledItemDelegate::sizeHint(option, index);
    return {plain.width() + ShapeSize + 3 * Inset, qMax(plain.height(), Height + 4)};
}

} // namespace KODMS::Host
