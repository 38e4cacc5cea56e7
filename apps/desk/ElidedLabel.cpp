// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/ElidedLabel.h"

#include "apps/desk/PlainText.h"

#include <QMouseEvent>
#include <QPainter>

namespace KODMS::Host {

namespace {

constexpr int Margin = 4;
/// Widths are rounded; without it a text that just fits would be shortened.
constexpr int Slack = 2;

} // namespace

ElidedLabel::ElidedLabel(QWidget *parent, const QString &text, Qt::TextElideMode mode)
    : QLabel(parent), m_mode(mode)
{
    setTextFormat(Qt::PlainText);
    setFullText(text);
}

void ElidedLabel::setFullText(const QString &text)
{
    m_fullText = text.simplified();
    setToolTip(plainToolTip(text));
    setAccessibleName(text);
    updateGeometry();
    update();
}

QSize ElidedLabel::sizeHint() const
{
    const int width = fontMetrics().horizontalAdvance(m_fullText) + 2 * Margin + Slack;
    return {qMin(width, maximumWidth()), fontMetrics().height() + 2};
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {40, fontMetrics().height() + 2};
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect area = contentsRect().adjusted(Margin, 0, -Margin, 0);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(m_fullText, m_mode, area.width()));
}

void ElidedLabel::mouseReleaseEvent(QMouseEvent *event)
{
    QLabel::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        Q_EMIT clicked();
}

} // namespace KODMS::Host
