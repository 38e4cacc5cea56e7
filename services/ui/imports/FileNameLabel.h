// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/OneLine.h"

#include <QLabel>

namespace KODMS::Services {

/// A line that leaves out the middle of what does not fit: names of archives differ at
/// both ends.
class FileNameLabel final : public QLabel {
public:
    explicit FileNameLabel(QWidget *parent) : QLabel(parent)
    {
        setTextFormat(Qt::PlainText);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }

    void setWhole(const QString &text)
    {
        m_whole = oneLine(text);
        setAccessibleName(m_whole);
        elide();
    }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        QLabel::resizeEvent(event);
        elide();
    }

private:
    void elide() { setText(fontMetrics().elidedText(m_whole, Qt::ElideMiddle, width())); }

    QString m_whole;
};

} // namespace KODMS::Services
