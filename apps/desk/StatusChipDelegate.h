// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStyledItemDelegate>

namespace KODMS::Host {

/// Paints a flow's status as a chip: a shape and a background tell the states
/// apart without the dark text colours of the table. A preference; the cell's
/// text stays as it is.
class StatusChipDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    enum class Shape { Dot, Cross, Tick, DoubleTick, Ring, Square };

    struct Chip {
        QColor background;
        QColor text;
        Shape shape;
    };

    /// By the colour that the table gives the cell.
    static Chip chipFor(const QColor &cellColour);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

} // namespace KODMS::Host
