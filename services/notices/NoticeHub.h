// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLoggingCategory>
#include <QObject>
#include <QString>

#include <mutex>
#include <vector>

namespace KODMS::Services {

Q_DECLARE_LOGGING_CATEGORY(lcConfig)
Q_DECLARE_LOGGING_CATEGORY(lcRecords)
Q_DECLARE_LOGGING_CATEGORY(lcFileStore)
Q_DECLARE_LOGGING_CATEGORY(lcArchive)
Q_DECLARE_LOGGING_CATEGORY(lcSession)
Q_DECLARE_LOGGING_CATEGORY(lcAccess)
Q_DECLARE_LOGGING_CATEGORY(lcTasks)

enum class NoticeLevel { Information = 0, Warning = 1, Error = 2 };

/// Where the service library says what people should see. The user-interface hub
/// relays it to the host. Lives in the GUI thread; raise() may come from any.
class NoticeHub : public QObject {
    Q_OBJECT

public:
    static NoticeHub &instance();

    void raise(NoticeLevel level, const QString &text);

Q_SIGNALS:
    void raised(int level, const QString &text);

private:
    NoticeHub() = default;

    /// Called by name: a queued call by name hands nothing of ours between threads.
    Q_INVOKABLE void raiseWaiting();

    struct Notice {
        int level;
        QString text;
    };

    std::mutex m_mutex;
    std::vector<Notice> m_waiting; ///< raised by other threads
};

/// One failure, said once in the log (category, operation, record, cause; English)
/// and once as an error notice (`userText`, translated). Both are one line, whatever
/// the texts hold.
void reportFailure(const QLoggingCategory &category, const char *operation, const QString &record,
                   const QString &cause, const QString &userText);

/// The service said no to a person: information in the log, a warning as notice.
void reportRefusal(const char *operation, const QString &record, const QString &cause,
                   const QString &userText);

} // namespace KODMS::Services
