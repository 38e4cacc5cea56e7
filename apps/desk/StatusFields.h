// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

class QLabel;
class QStatusBar;
class QToolButton;

namespace KODMS::Host {

class ElidedLabel;
class NoticeLog;

/// What the status bar says: the latest notice at the left; notice count, user,
/// roles and database at the right.
class StatusFields : public QObject {
    Q_OBJECT

public:
    StatusFields(QStatusBar &bar, NoticeLog &log);

    /// A role's name for people; the technical name when it is not known.
    static QString roleText(const QString &role);

Q_SIGNALS:
    /// The notice or its count was clicked.
    void noticesRequested();

private Q_SLOTS:
    void showLatest();
    void showUnread(int unread);

private:
    QLabel *makeUserLabel(QStatusBar &bar) const;

    NoticeLog &m_log;
    QLabel *m_icon = nullptr;
    ElidedLabel *m_latest = nullptr;
    QToolButton *m_count = nullptr;
};

} // namespace KODMS::Host
