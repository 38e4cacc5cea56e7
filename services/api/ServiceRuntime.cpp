// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/ServiceRuntime.h"

#include "services/api/ShownSearches.h"
#include "services/notices/NoticeHub.h"
#include "services/session/Runtime.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace KODMS::Services {

namespace {

/// A connection closed after the application object has gone would be too late.
void stopWithApplication()
{
    ServiceRuntime::instance().stop();
}

} // namespace

ServiceRuntime &ServiceRuntime::instance()
{
    static ServiceRuntime runtime;
    return runtime;
}

Outcome ServiceRuntime::start(const QString &iniPath)
{
    if (isRunning())
        return Outcome::failure(
            QCoreApplication::translate("Runtime", "服务已在运行：%1").arg(configPath()));
    const auto opened = Runtime::open(iniPath);
    if (!opened) {
        qCInfo(lcConfig).noquote() << "start" << opened.text();
        return opened.outcome;
    }
    Runtime::setCurrent(opened.value);
    ShownSearches::instance().attach();
    qRemovePostRoutine(stopWithApplication);
    qAddPostRoutine(stopWithApplication);
    const QStringList notices = configurationNotices();
    for (const QString &notice : notices) {
        qCInfo(lcConfig).noquote() << notice;
        NoticeHub::instance().raise(NoticeLevel::Warning, notice);
    }
    return Outcome::success();
}

void ServiceRuntime::stop()
{
    Runtime::setCurrent(nullptr);
}

bool ServiceRuntime::isRunning() const
{
    return Runtime::current() != nullptr;
}

QString ServiceRuntime::defaultConfigPath()
{
    return QFileInfo(Configuration::defaultPath()).absoluteFilePath();
}

QString ServiceRuntime::configPath() const
{
    return isRunning() ? Runtime::current()->configuration().filePath : QString();
}

QString ServiceRuntime::databaseText() const
{
    return isRunning() ? Runtime::current()->records().database().displayText() : QString();
}

QString ServiceRuntime::fileStoreText() const
{
    return isRunning() ? Runtime::current()->fileStore().placeText() : QString();
}

bool ServiceRuntime::isSample() const
{
    return isRunning() && Runtime::current()->configuration().isSample;
}

int ServiceRuntime::schemaVersion() const
{
    return isRunning() ? Runtime::current()->schemaVersion() : 0;
}

QStringList ServiceRuntime::configurationNotices() const
{
    return isRunning() ? Runtime::current()->configuration().notices : QStringList();
}

} // namespace KODMS::Services
