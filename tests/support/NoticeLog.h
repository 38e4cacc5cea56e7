// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/NoticeHub.h"

#include <QObject>
#include <QVector>

namespace KODMS::Tests {

/// Keeps every notice that is raised while it lives.
class NoticeLog {
public:
    struct Notice {
        int level = 0;
        QString text;
    };

    NoticeLog()
    {
        QObject::connect(&Services::NoticeHub::instance(), &Services::NoticeHub::raised,
                         &m_receiver, [this](int level, const QString &text) {
                             notices.append({level, text});
                         });
    }

    NoticeLog(const NoticeLog &) = delete;
    NoticeLog &operator=(const NoticeLog &) = delete;

    QVector<Notice> notices;

private:
    QObject m_receiver;
};

} // namespace KODMS::Tests
