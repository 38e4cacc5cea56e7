// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/desk/ScreenshotLog.h"

#include <QString>

class QWidget;

namespace KODMS::Services {
struct SampleAccount;
}

namespace KODMS::Host {

class HandOverLog;
class MainWindow;
class NoticeLog;
class Preferences;

/// Renders the host's windows into PNG files, signed in with the demo accounts of
/// the running sample installation. Refuses any other installation.
class ScreenshotRun {
public:
    ScreenshotRun(QString folder, NoticeLog &notices, HandOverLog &handOvers);

    /// The exit code; what went wrong is printed.
    int run();

private:
    bool renderSignIn();
    bool renderDesks(Preferences &preferences);
    bool renderDesk(const Services::SampleAccount &account, const QString &name,
                    Preferences &preferences);
    bool saveSecondDesk(MainWindow &window, const QString &name);
    bool renderExtras(MainWindow &window);
    void provokeNotices();
    bool saveHandOvers(MainWindow &window);
    bool saveHistory(MainWindow &window);
    bool saveJobWindows(const MainWindow &window);
    bool saveQuestions(const MainWindow &window, int flowId);
    bool save(QWidget &window, const QString &name);

    QString m_folder;
    NoticeLog &m_notices;
    HandOverLog &m_handOvers;
    ScreenshotLog m_log;
};

} // namespace KODMS::Host
