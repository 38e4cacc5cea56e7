// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/NoticeLog.h"

#include "apps/desk/Icons.h"
#include "apps/desk/PlainText.h"

namespace KODMS::Host {

namespace {

constexpr int MostNotices = 1000;

}

NoticeLog::NoticeLog(QObject *parent)
    : QAbstractTableModel(parent), m_icons{Icons::notice(0), Icons::notice(1), Icons::notice(2)}
{
}

NoticeLog::Notice NoticeLog::latest() const
{
    return m_notices.isEmpty() ? Notice() : m_notices.last();
}

QString NoticeLog::levelText(int level)
{
    if (level <= 0)
        return tr("信息");
    return level == 1 ? tr("警告") : tr("错误");
}

QString NoticeLog::timeText(const QDateTime &time)
{
    return time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

int NoticeLog::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_notices.size();
}

int NoticeLog::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant NoticeLog::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_notices.size())
        return {};
    const Notice &notice = m_notices.at(m_notices.size() - 1 - index.row());
    if (role == Qt::DecorationRole && index.column() == LevelColumn)
        return m_icons.at(static_cast<std::size_t>(notice.level));
    if (role == Qt::ToolTipRole && index.column() == TextColumn)
        return plainToolTip(notice.text);
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case TimeColumn:
        return timeText(notice.time);
    case LevelColumn:
        return levelText(notice.level);
    default:
        return notice.text;
    }
}

QVariant NoticeLog::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case TimeColumn:
        return tr("时间");
    case LevelColumn:
        return tr("级别");
    default:
        return tr("内容");
    }
}

void NoticeLog::add(int level, const QString &text)
{
    if (m_notices.size() == MostNotices) {
        beginRemoveRows({}, MostNotices - 1, MostNotices - 1);
        m_notices.removeFirst();
        endRemoveRows();
    }
    beginInsertRows({}, 0, 0);
    m_notices.append({QDateTime::currentDateTimeUtc(), qBound(0, level, 2), text});
    endInsertRows();
    ++m_unread;
    Q_EMIT unreadChanged(m_unread);
    Q_EMIT latestChanged();
}

void NoticeLog::clear()
{
    beginResetModel();
    m_notices.clear();
    endResetModel();
    markRead();
    Q_EMIT latestChanged();
}

void NoticeLog::markRead()
{
    if (m_unread == 0)
        return;
    m_unread = 0;
    Q_EMIT unreadChanged(0);
}

} // namespace KODMS::Host
