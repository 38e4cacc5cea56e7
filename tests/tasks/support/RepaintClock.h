// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QVector>
#include <QWidget>

namespace KODMS::Tests {

/// A window that asks to be painted a hundred times a second and notes how long it
/// waited for each painting.
class RepaintClock final : public QWidget {
    Q_OBJECT

public:
    RepaintClock();

    /// Forgets what was; painting is measured from now on.
    void start();

    int count() const { return m_gaps.size(); }

    qint64 longestMs() const;
    /// That part of the gaps (0 to 1) is not longer.
    qint64 percentileMs(double part) const;
    QString text() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QTimer m_timer;
    QElapsedTimer m_sinceLast;
    QVector<qint64> m_gaps;
};

} // namespace KODMS::Tests
