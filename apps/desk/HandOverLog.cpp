// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/HandOverLog.h"

#include "apps/desk/NoticeLog.h"
#include "apps/desk/PlainText.h"

#include <QDir>

namespace KODMS::Host {

namespace {

constexpr int MostHandOvers = 1000;

QString pathOf(const QString &handedOver)
{
    return handedOver.section(QLatin1Char('|'), 0, 0);
}

QString parametersOf(const QString &handedOver)
{
    return handedOver.section(QLatin1Char('|'), 1);
}

} // namespace

HandOverLog::HandOver HandOverLog::at(int row) const
{
    return m_handOvers.value(m_handOvers.size() - 1 - row);
}

QString HandOverLog::kindText(Kind kind)
{
    switch (kind) {
    case Kind::Import:
        return tr("导入");
    case Kind::Input:
        return tr("读入");
    default:
        return tr("导出");
    }
}

int HandOverLog::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_handOvers.size();
}

int HandOverLog::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString HandOverLog::cellText(const HandOver &handOver, int column)
{
    switch (column) {
    case TimeColumn:
        return NoticeLog::timeText(handOver.time);
    case KindColumn:
        return kindText(handOver.kind);
    case JobColumn:
        return plainLine(handOver.jobName);
    case PathColumn:
        return plainLine(QDir::toNativeSeparators(handOver.path));
    default:
        return plainLine(handOver.parameters);
    }
}

QVariant HandOverLog::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_handOvers.size())
        return {};
    const QString text = cellText(at(index.row()), index.column());
    if (role == Qt::DisplayRole)
        return text;
    if (role == Qt::ToolTipRole)
        return plainToolTip(text);
    return {};
}

QVariant HandOverLog::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case TimeColumn:
        return tr("时间");
    case KindColumn:
        return tr("类别");
    case JobColumn:
        return tr("料号");
    case PathColumn:
        return tr("路径");
    default:
        return tr("参数");
    }
}

void HandOverLog::addImport(const QString &path, const QString &jobName)
{
    add(Kind::Import, jobName, pathOf(path), parametersOf(path));
}

void HandOverLog::addInput(const QString &jobName, const QString &path)
{
    add(Kind::Input, jobName, pathOf(path), parametersOf(path));
}

void HandOverLog::addExport(const QString &jobName, int jobId)
{
    add(Kind::Export, jobName, QString(), tr("编号 %1").arg(jobId));
}

void HandOverLog::add(Kind kind, const QString &jobName, const QString &path,
                      const QString &parameters)
{
    if (m_handOvers.size() == MostHandOvers) {
        beginRemoveRows({}, MostHandOvers - 1, MostHandOvers - 1);
        m_handOvers.removeFirst();
        endRemoveRows();
    }
    beginInsertRows({}, 0, 0);
    m_handOvers.append({QDateTime::currentDateTimeUtc(), kind, jobName, path, parameters});
    endInsertRows();
    Q_EMIT countChanged();
}

void HandOverLog::clear()
{
    beginResetModel();
    m_handOvers.clear();
    endResetModel();
    Q_EMIT countChanged();
}

} // namespace KODMS::Host
