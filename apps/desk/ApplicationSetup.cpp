// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/ApplicationSetup.h"

#include "apps/desk/Icons.h"
#include "apps/desk/Options.h"
#include "apps/desk/Theme.h"
#include "apps/desk/Translations.h"

#include <QApplication>
#include <QTextCodec>

namespace KODMS::Host {

void ApplicationSetup::before(const Options &options)
{
    writeChinese();
    paintWithoutOpenGl();
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    if (options.screenshotsDir.isEmpty())
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_FONT_DPI", "96"); // the platform without a screen assumes another
    if (options.scale > 0)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(options.scale));
}

/// The desks compare statuses in the local encoding. One without Chinese would make question marks
/// of them, and other statuses of the same length equal.
void ApplicationSetup::writeChinese()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

/// Widgets are painted without it, but its driver would be loaded all the same: 50 MB, and
/// half of the time to the sign-in window.
void ApplicationSetup::paintWithoutOpenGl()
{
    constexpr auto variable = "QT_XCB_GL_INTEGRATION";
    if (!qEnvironmentVariableIsSet(variable))
        qputenv(variable, "none");
}

void ApplicationSetup::after(QApplication &app, const QString &language)
{
    QCoreApplication::setApplicationName(QStringLiteral("kodms-desk"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KODMS_VERSION));
    Translations::install(app, language);
    Theme::apply(app);
    app.setWindowIcon(Icons::application());
    app.setQuitOnLastWindowClosed(false);
}

} // namespace KODMS::Host
