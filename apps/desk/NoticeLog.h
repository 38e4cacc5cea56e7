// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractTableModel>
#include <QDateTime>
#include <QIcon>
#include <QVector>

#include <array>

namespace KODMS::Host {

/// The notices of this session, newest first, and how many of them nobody has
/// looked at yet. Keeps the last 1000.
class NoticeLog : public QAbstractTableModel {
    Q_OBJECT

public:
    struct Notice {
        QDateTime time;
        int level = 0; ///< 0 = information, 1 = warning, 2 = error
        QString text;
    };

    enum Column { TimeColumn, LevelColumn, TextColumn, ColumnCount };

    explicit NoticeLog(QObject *parent = nullptr);

    int unread() const { return m_unread; }

    /// The newest; an empty text when there is none.
    Notice latest() const;

    static QString levelText(int level);
    static QString timeText(const QDateTime &time);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

public Q_SLOTS:
    void add(int level, const QString &text);
    void clear();
    void markRead();

Q_SIGNALS:
    void unreadChanged(int unread);
    void latestChanged();

private:
    QVector<Notice> m_notices;    ///< oldest first
    std::array<QIcon, 3> m_icons; ///< by level
    int m_unread = 0;
};

} // namespace KODMS::Host
