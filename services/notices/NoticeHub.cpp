// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/notices/NoticeHub.h"

#include <QMetaObject>
#include <QThread>

namespace KODMS::Services {

Q_LOGGING_CATEGORY(lcConfig, "kodms.config")
Q_LOGGING_CATEGORY(lcRecords, "kodms.records")
Q_LOGGING_CATEGORY(lcFileStore, "kodms.filestore")
Q_LOGGING_CATEGORY(lcArchive, "kodms.archive")
Q_LOGGING_CATEGORY(lcSession, "kodms.session")
Q_LOGGING_CATEGORY(lcAccess, "kodms.access")
Q_LOGGING_CATEGORY(lcTasks, "kodms.tasks")

NoticeHub &NoticeHub::instance()
{
    static NoticeHub hub;
    return hub;
}

void NoticeHub::raise(NoticeLevel level, const QString &text)
{
    const int number = static_cast<int>(level);
    if (QThread::currentThread() == thread()) {
        Q_EMIT raised(number, text);
        return;
    }
    QMetaObject::invokeMethod(
        this, [this, number, text] { Q_EMIT raised(number, text); }, Qt::QueuedConnection);
}

void reportFailure(const QLoggingCategory &category, const char *operation, const QString &record,
                   const QString &cause, const QString &userText)
{
    qCWarning(category).noquote() << operation
                                  << QString(QLatin1Char('[') + record + QLatin1Char(']')) << cause;
    NoticeHub::instance().raise(NoticeLevel::Error, userText);
}

void reportRefusal(const char *operation, const QString &record, const QString &cause,
                   const QString &userText)
{
    qCInfo(lcAccess).noquote() << operation << QString(QLatin1Char('[') + record + QLatin1Char(']'))
                               << cause;
    NoticeHub::instance().raise(NoticeLevel::Warning, userText);
}

} // namespace KODMS::Services
