// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include <memory>

namespace KODMS::Host {

class HandOverLog;
class MainWindow;
class NoticeLog;
class Preferences;
class SignInWindow;

/// Who sits at the host: shows the sign-in window, then the main window of whoever
/// signed in, and goes back to the sign-in window for a change of user.
class HostSession : public QObject {
    Q_OBJECT

public:
    HostSession(Preferences &preferences, NoticeLog &notices, HandOverLog &handOvers);
    ~HostSession() override;

    /// The window for the next sign-in, shown.
    SignInWindow *showSignIn();

    /// Null while nobody is signed in.
    MainWindow *mainWindow() const { return m_mainWindow.get(); }

Q_SIGNALS:
    /// The application can end.
    void finished();

private Q_SLOTS:
    void openMainWindow();
    void switchUser();
    void endSession();

private:
    bool eventFilter(QObject *watched, QEvent *event) override;

    Preferences &m_preferences;
    NoticeLog &m_notices;
    HandOverLog &m_handOvers;
    std::unique_ptr<SignInWindow> m_signIn;
    std::unique_ptr<MainWindow> m_mainWindow;
    bool m_switching = false;
};

} // namespace KODMS::Host
