// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/LiveRefresh.h"

#include "apps/desk/Preferences.h"
#include "apps/desk/RefreshMoment.h"
#include "services/api/LiveChanges.h"

#include <QEvent>
#include <QWidget>

namespace KODMS::Host {

using Services::LiveChanges;

namespace {

constexpr int betweenTries = 500; // milliseconds

} // namespace

LiveRefresh::LiveRefresh(QWidget &window, QWidget &desks, Preferences &preferences, int userId)
    : QObject(&window), m_window(window), m_desks(desks), m_preferences(preferences),
      m_userId(userId), m_isAutomatic(preferences.automaticRefresh(userId))
{
    m_waiting.setInterval(betweenTries);
    connect(&m_waiting, &QTimer::timeout, this, &LiveRefresh::refreshIfQuiet);
    connect(&LiveChanges::instance(), &LiveChanges::countChanged, this, &LiveRefresh::wait);
    window.installEventFilter(this);
}

LiveRefresh::~LiveRefresh()
{
    LiveChanges::instance().setWatched(false);
}

void LiveRefresh::setAutomatic(bool automatic)
{
    m_isAutomatic = automatic;
    m_preferences.setAutomaticRefresh(m_userId, automatic);
    wait();
}

bool LiveRefresh::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::WindowStateChange:
        watch();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void LiveRefresh::watch()
{
    LiveChanges::instance().setWatched(m_window.isVisible() && !m_window.isMinimized());
    wait();
}

void LiveRefresh::wait()
{
    const LiveChanges &changes = LiveChanges::instance();
    if (m_isAutomatic && changes.isWatched() && changes.count() > 0)
        m_waiting.start();
    else
        m_waiting.stop();
}

/// When the records cannot be read, the count stays, and the next try follows the look that
/// reads them again.
void LiveRefresh::refreshIfQuiet()
{
    if (LiveChanges::instance().hasFailed() || !RefreshMoment::isNow(m_window, m_desks))
        return;
    Q_EMIT refreshRequested();
}

} // namespace KODMS::Host
