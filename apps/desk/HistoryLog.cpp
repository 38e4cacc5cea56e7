// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/HistoryLog.h"

#include "apps/desk/HistoryWords.h"
#include "apps/desk/PlainText.h"
#include "apps/desk/Theme.h"

namespace KODMS::Host {

namespace {

QString cell(const Services::HistoryEntry &entry, int column)
{
    switch (column) {
    case HistoryLog::TimeColumn:
        return entry.time;
    case HistoryLog::WhoColumn:
        return HistoryWords::who(entry);
    case HistoryLog::ActionColumn:
        return HistoryWords::action(entry);
    default:
        return HistoryWords::content(entry).simplified();
    }
}

QString details(const Services::HistoryEntry &entry)
{
    return plainToolTip(entry.isRefused ? entry.after : HistoryWords::content(entry));
}

} // namespace

/// Whoever reads far back is not thrown to the top by a refresh that brings nothing.
bool HistoryLog::isKnown(const Services::HistoryPage &page) const
{
    return page.jobName == m_page.jobName && !page.entries.isEmpty() && !m_page.entries.isEmpty() &&
           page.entries.first().id == m_page.entries.first().id;
}

void HistoryLog::show(const QString &flowGuid)
{
    const auto page = Services::JobHistory::of(flowGuid);
    if (!page) {
        clear();
        return;
    }
    if (flowGuid == m_flowGuid && isKnown(page.value))
        return;
    beginResetModel();
    m_flowGuid = flowGuid;
    m_page = page.value;
    endResetModel();
    Q_EMIT changed();
}

void HistoryLog::showOlder()
{
    if (!m_page.hasOlder)
        return;
    const auto older = Services::JobHistory::of(m_flowGuid, m_page.entries.last().id);
    if (!older)
        return;
    m_page.hasOlder = older.value.hasOlder;
    if (!older.value.entries.isEmpty()) {
        const int first = m_page.entries.size();
        beginInsertRows({}, first, first + older.value.entries.size() - 1);
        m_page.entries += older.value.entries;
        endInsertRows();
    }
    Q_EMIT changed();
}

void HistoryLog::clear()
{
    beginResetModel();
    m_flowGuid.clear();
    m_page = {};
    endResetModel();
    Q_EMIT changed();
}

int HistoryLog::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_page.entries.size();
}

int HistoryLog::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant HistoryLog::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_page.entries.size())
        return {};
    const Services::HistoryEntry &entry = m_page.entries.at(index.row());
    if (role == Qt::DisplayRole)
        return cell(entry, index.column());
    if (role == Qt::ToolTipRole)
        return details(entry);
    if (role == Qt::ForegroundRole && entry.isRefused)
        return Colour::Caution;
    return {};
}

QVariant HistoryLog::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case TimeColumn:
        return tr("时间");
    case WhoColumn:
        return tr("人员");
    case ActionColumn:
        return tr("操作");
    default:
        return tr("内容");
    }
}

} // namespace KODMS::Host
