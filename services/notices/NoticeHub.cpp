// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/notices/NoticeHub.h"

#include "services/notices/OneLine.h"

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
    const QString line = oneLine(text);
    if (QThread::currentThread() == thread()) {
        Q_EMIT raised(number, line);
        return;
    }
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_waiting.push_back({number, line});
    }
    QMetaObject::invokeMethod(this, "raiseWaiting", Qt::QueuedConnection);
}

void NoticeHub::raiseWaiting()
{
    std::vector<Notice> waiting;
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        waiting.swap(m_waiting);
    }
    for (const Notice &notice : waiting)
        Q_EMIT raised(notice.level, notice.text);
}

namespace {

/// Record and cause may hold what a customer typed: it must not look like lines of its own.
QString lineOf(const char *operation, const QString &record, const QString &cause)
{
    return oneLine(QLatin1String(operation) + QStringLiteral(" [") + record + QStringLiteral("] ") +
                   cause);
}

} // namespace

void reportFailure(const QLoggingCategory &category, const char *operation, const QString &record,
                   const QString &cause, const QString &userText)
{
    qCWarning(category).noquote() << lineOf(operation, record, cause);
    NoticeHub::instance().raise(NoticeLevel::Error, userText);
}

void reportRefusal(const char *operation, const QString &record, const QString &cause,
                   const QString &userText)
{
    qCInfo(lcAccess).noquote() << lineOf(operation, record, cause);
    NoticeHub::instance().raise(NoticeLevel::Warning, userText);
}

} // namespace KODMS::Services
