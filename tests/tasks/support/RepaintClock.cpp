// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/tasks/support/RepaintClock.h"

#include <algorithm>

namespace KODMS::Tests {

RepaintClock::RepaintClock()
{
    resize(300, 200);
    connect(&m_timer, &QTimer::timeout, this, [this] { update(); });
    m_timer.start(10);
}

void RepaintClock::start()
{
    m_gaps.clear();
    m_sinceLast.start();
}

void RepaintClock::paintEvent(QPaintEvent *)
{
    if (m_sinceLast.isValid())
        m_gaps << m_sinceLast.restart();
}

qint64 RepaintClock::longestMs() const
{
    return percentileMs(1);
}

qint64 RepaintClock::percentileMs(double part) const
{
    if (m_gaps.isEmpty())
        return -1;
    QVector<qint64> sorted = m_gaps;
    std::sort(sorted.begin(), sorted.end());
    return sorted.at(qMin(sorted.size() - 1, static_cast<int>(part * sorted.size())));
}

QString RepaintClock::text() const
{
    return QStringLiteral("%1 paintings, at most %2 ms apart, 99 of 100 within %3 ms")
        .arg(count())
        .arg(longestMs())
        .arg(percentileMs(0.99));
}

} // namespace KODMS::Tests
