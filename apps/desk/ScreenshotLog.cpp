// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/ScreenshotLog.h"

#include <QLoggingCategory>
#include <QString>

namespace KODMS::Host {

QtMessageHandler ScreenshotLog::s_before = nullptr;

ScreenshotLog::ScreenshotLog()
{
    s_before = qInstallMessageHandler(&ScreenshotLog::handle);
    provoking(false);
}

ScreenshotLog::~ScreenshotLog()
{
    QLoggingCategory::setFilterRules(QString());
    qInstallMessageHandler(s_before);
}

void ScreenshotLog::provoking(bool is)
{
    QLoggingCategory::setFilterRules(is ? QStringLiteral("kodms.*=false")
                                        : QStringLiteral("kodms.*.info=false"));
}

void ScreenshotLog::handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtWarningMsg && text.startsWith(QLatin1String("This plugin does not support ")))
        return;
    s_before(type, context, text);
}

} // namespace KODMS::Host
