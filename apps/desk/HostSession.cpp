// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/HostSession.h"

#include "apps/desk/HandOverLog.h"
#include "apps/desk/MainWindow.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/Preferences.h"
#include "apps/desk/SignInWindow.h"
#include "services/api/SignIn.h"

#include <QEvent>

namespace KODMS::Host {

HostSession::HostSession(Preferences &preferences, NoticeLog &notices, HandOverLog &handOvers)
    : m_preferences(preferences), m_notices(notices), m_handOvers(handOvers)
{
}

HostSession::~HostSession() = default;

SignInWindow *HostSession::showSignIn()
{
    if (!m_signIn) {
        m_signIn = std::make_unique<SignInWindow>();
        m_signIn->installEventFilter(this);
        connect(m_signIn.get(), &SignInWindow::signedIn, this, &HostSession::openMainWindow);
    }
    m_signIn->prepare(m_preferences.lastLogin());
    m_signIn->show();
    m_signIn->activateWindow();
    return m_signIn.get();
}

bool HostSession::eventFilter(QObject *watched, QEvent *event)
{
    // Closing the sign-in window without signing in is the wish to leave.
    if (event->type() == QEvent::Close && watched == m_signIn.get() && !m_mainWindow)
        Q_EMIT finished();
    return QObject::eventFilter(watched, event);
}

void HostSession::openMainWindow()
{
    m_preferences.setLastLogin(Services::SignIn::current().loginName);
    m_mainWindow = std::make_unique<MainWindow>(m_preferences, m_notices, m_handOvers);
    connect(m_mainWindow.get(), &MainWindow::closed, this, &HostSession::endSession,
            Qt::QueuedConnection);
    connect(m_mainWindow.get(), &MainWindow::switchUserRequested, this, &HostSession::switchUser,
            Qt::QueuedConnection);
    m_mainWindow->show();
    m_signIn->hide();
}

void HostSession::switchUser()
{
    if (!m_mainWindow || m_switching)
        return;
    m_switching = true;
    if (!m_mainWindow->close())
        m_switching = false;
}

void HostSession::endSession()
{
    // The desks go first: what they own must not act for the next user.
    m_mainWindow.reset();
    Services::SignIn::signOut();
    m_notices.clear();
    m_handOvers.clear();
    if (!m_switching) {
        Q_EMIT finished();
        return;
    }
    m_switching = false;
    showSignIn()->expectSomebodyElse();
}

} // namespace KODMS::Host
