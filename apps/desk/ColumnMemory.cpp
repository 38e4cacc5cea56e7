// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/ColumnMemory.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVector>

namespace KODMS::Host {

namespace {

constexpr int FormatVersion = 1;
constexpr int WidestColumn = 2000;

struct Remembered {
    QString id;
    int width = 0;
};

QString headerText(const QHeaderView &header, int logicalIndex)
{
    return header.model()->headerData(logicalIndex, header.orientation()).toString();
}

/// Empty when the text is damaged or of another format.
QVector<Remembered> parse(const QByteArray &text)
{
    const QJsonObject root = QJsonDocument::fromJson(text).object();
    if (root.value(QLatin1String("version")).toInt() != FormatVersion)
        return {};
    QVector<Remembered> columns;
    const QJsonArray array = root.value(QLatin1String("columns")).toArray();
    for (const QJsonValue &value : array) {
        const QJsonObject column = value.toObject();
        const Remembered one{column.value(QLatin1String("id")).toString(),
                             column.value(QLatin1String("width")).toInt()};
        if (!one.id.isEmpty())
            columns << one;
    }
    return columns;
}

void restoreWidth(QHeaderView &header, int logicalIndex, int width)
{
    const bool settable = header.sectionResizeMode(logicalIndex) == QHeaderView::Interactive &&
                          !header.isSectionHidden(logicalIndex);
    if (settable && width > 0)
        header.resizeSection(logicalIndex,
                             qBound(header.minimumSectionSize(), width, WidestColumn));
}

} // namespace

QString ColumnMemory::columnId(const QHeaderView &header, int logicalIndex)
{
    const QString text = headerText(header, logicalIndex);
    int same = 0;
    for (int i = 0; i < logicalIndex; ++i)
        same += headerText(header, i) == text ? 1 : 0;
    return same == 0 ? text : text + QLatin1Char('#') + QString::number(same + 1);
}

QByteArray ColumnMemory::save(const QHeaderView &header)
{
    QJsonArray columns;
    for (int visual = 0; visual < header.count(); ++visual) {
        const int logical = header.logicalIndex(visual);
        columns.append(QJsonObject{{QStringLiteral("id"), columnId(header, logical)},
                                   {QStringLiteral("width"), header.sectionSize(logical)}});
    }
    const QJsonObject root{{QStringLiteral("version"), FormatVersion},
                           {QStringLiteral("columns"), columns}};
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}

bool ColumnMemory::restore(QHeaderView &header, const QByteArray &text)
{
    const QVector<Remembered> columns = parse(text);
    if (columns.isEmpty())
        return false;
    QHash<QString, int> present;
    for (int logical = 0; logical < header.count(); ++logical)
        present.insert(columnId(header, logical), logical);
    int previous = -1; // logical index of the remembered column placed last
    for (const Remembered &column : columns) {
        const auto found = present.constFind(column.id);
        if (found == present.constEnd())
            continue;
        const int logical = found.value();
        present.erase(found); // a name that stands twice in the text counts once
        const int from = header.visualIndex(logical);
        if (previous >= 0 && from < header.visualIndex(previous))
            header.moveSection(from, header.visualIndex(previous));
        restoreWidth(header, logical, column.width);
        previous = logical;
    }
    return true;
}

} // namespace KODMS::Host
