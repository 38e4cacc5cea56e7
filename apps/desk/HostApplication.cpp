// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/HostApplication.h"

#include "apps/desk/ApplicationSetup.h"
#include "apps/desk/CamRelay.h"
#include "apps/desk/FirstPaint.h"
#include "apps/desk/HandOverLog.h"
#include "apps/desk/HostSession.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/Options.h"
#include "apps/desk/Preferences.h"
#include "apps/desk/ProcessClock.h"
#include "apps/desk/ScreenshotRun.h"
#include "apps/desk/SignInWindow.h"
#include "apps/desk/StartFailureWindow.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/ServiceRuntime.h"

#include <QApplication>

#include <cstdio>

namespace KODMS::Host {

namespace {

int fail(const Options &options, const QString &reason, const QString &configPath)
{
    std::fprintf(stderr, "kodms-desk: %s\n", qPrintable(reason));
    StartFailureWindow window(reason, configPath);
    if (options.exitAfterShow || !options.screenshotsDir.isEmpty())
        return 1; // nobody is there to close it
    window.exec();
    return 1;
}

int runWindows(QApplication &app, const Options &options, Preferences &preferences,
               NoticeLog &notices, HandOverLog &handOvers)
{
    HostSession session(preferences, notices, handOvers);
    QObject::connect(&session, &HostSession::finished, &app, &QCoreApplication::quit);
    SignInWindow *signIn = session.showSignIn();
    if (options.exitAfterShow)
        FirstPaint::after(*signIn, [] {
            std::printf("%lld\n", static_cast<long long>(ProcessClock::sinceProcessStart()));
            QCoreApplication::exit(0);
        });
    return app.exec();
}

} // namespace

int HostApplication::run(const Options &options, int &argc, char **argv)
{
    ApplicationSetup::before(options);
    QApplication app(argc, argv);
    if (options.showHelp) {
        std::fputs(qPrintable(Options::helpText()), stdout);
        return 0;
    }
    auto &runtime = Services::ServiceRuntime::instance();
    const QString configPath = options.configPath.isEmpty()
                                   ? Services::ServiceRuntime::defaultConfigPath()
                                   : options.configPath;
    Preferences preferences(Preferences::fileBeside(configPath));
    ApplicationSetup::after(app,
                            options.language.isEmpty() ? preferences.language() : options.language);
    NoticeLog notices;
    QObject::connect(UI::DMS_UICommon::interface(), &UI::DMS_UICommon::serviceNotice, &notices,
                     &NoticeLog::add);
    HandOverLog handOvers;
    const CamRelay relay(notices, handOvers);
    const Services::Outcome started = runtime.start(configPath);
    if (!started)
        return fail(options, started.text, configPath);
    const int code = options.screenshotsDir.isEmpty()
                         ? runWindows(app, options, preferences, notices, handOvers)
                         : ScreenshotRun(options.screenshotsDir, notices, handOvers).run();
    runtime.stop();
    return code;
}

} // namespace KODMS::Host
