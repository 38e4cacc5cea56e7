// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/DMS_Export_Widget.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"

#include <QApplication>
#include <QMainWindow>
#include <QTimer>

using namespace KODMS::Services;

/// Whatever asks for the login and the password in your host.
static Outcome signInFromCommandLine(const QStringList &arguments)
{
    return SignIn::signIn(arguments.value(1), qEnvironmentVariable("HOST_PASSWORD"));
}

int main(int argc, char **argv)
{
    // The ten lines that a host needs.
    QApplication application(argc, argv);
    ServiceRuntime &services = ServiceRuntime::instance();
    Outcome outcome = services.start();
    if (outcome)
        outcome = signInFromCommandLine(QApplication::arguments());
    if (!outcome) {
        qCritical("%s", qPrintable(outcome.text));
        return 1;
    }
    QMainWindow window;
    window.setCentralWidget(new KODMS::UI::DMS_Export_Widget(&window));
    window.show();

    // `minimal_host LOGIN picture.png` draws the window into a file and ends.
    const QString picture = QApplication::arguments().value(2);
    if (!picture.isEmpty()) {
        QTimer::singleShot(0, &window, [&window, picture] {
            QApplication::exit(window.grab().save(picture) ? 0 : 1);
        });
    }
    const int code = QApplication::exec();
    delete window.takeCentralWidget(); // before the services that it uses
    services.stop();
    return code;
}
