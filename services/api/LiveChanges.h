// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

namespace KODMS::Services {

class ForeignChanges;
class ServerProbe;

/// Says how many records others have changed since the desks of this program last read
/// them: other programs, and the same person at another desk. A refresh of the desks,
/// whoever asked for it, counts from zero again. GUI thread.
class KODMS_SERVICES_API LiveChanges : public QObject {
    Q_OBJECT

public:
    static LiveChanges &instance();

    /// Counts from now, from zero, until the user signs out. Before the desks are made:
    /// they read after it, and this hears of a refresh before they do.
    void begin();

    /// Whether somebody sees the count. Only then is it brought up to date: at once, and
    /// every two seconds, or when the database server tells of changes and every ten
    /// seconds; after a failure, which is logged once, more and more seldom. Nobody waits
    /// for a server that is away: it is looked for beside the work, and when it was made out
    /// by somebody's action. An error that people are told of is looked into at once.
    void setWatched(bool watched);

    bool isWatched() const { return m_timer.isActive(); }

    /// Records as of the last look, and one more when something was written and nobody said what.
    int count() const { return m_count; }

    /// True from a look that failed until one that did not.
    bool hasFailed() const { return m_hasFailed; }

    /// True while the services work for a desk, which may be in the middle of its rows.
    static bool isWorking();

    /// Milliseconds between two looks while nothing fails and nobody tells.
    static constexpr int Interval = 2000;
    /// The same where the database server tells: its connection may be lost without a word.
    static constexpr int IntervalWhenTold = 10'000;

    /// Another one in its place, from the next begin() on: for tests, which find out that the
    /// server's word alone is enough when nobody looks of oneself for a day.
    void setIntervalWhenTold(int milliseconds) { m_intervalWhenTold = milliseconds; }

Q_SIGNALS:
    void countChanged(int records);

    /// The records can no longer be read, or can be read again.
    void failedChanged(bool hasFailed);

private:
    LiveChanges();
    ~LiveChanges() override;

    void listen();
    void look();
    void lookSoon();
    void lookNow();
    bool mayLook() const;
    void startAgain();
    void heard(int level);
    void end();
    void show(int count);
    void lookBy(const std::function<void(ForeignChanges &)> &step);
    void succeeded();
    void failed(const QString &cause);

    std::unique_ptr<ServerProbe> m_probe;
    QTimer m_timer;
    QTimer m_told; ///< runs a moment after somebody told of changes, or of an error
    int m_interval = Interval;
    int m_intervalWhenTold = IntervalWhenTold;
    int m_count = 0;
    bool m_isOn = false; ///< from begin() until the user signs out
    bool m_hasFailed = false;
    bool m_wasErrorTold = false; ///< to people, since the last look that did not fail
};

} // namespace KODMS::Services
