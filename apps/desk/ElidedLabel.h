// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>

namespace KODMS::Host {

/// A one-line label that shortens its text to the room it has, with the whole
/// text as tooltip. Line breaks become spaces.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent, const QString &text = QString(),
                         Qt::TextElideMode mode = Qt::ElideRight);

    void setFullText(const QString &text);

    const QString &fullText() const { return m_fullText; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void clicked();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QString m_fullText;
    Qt::TextElideMode m_mode;
};

} // namespace KODMS::Host
