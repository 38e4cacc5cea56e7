// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLayout>
#include <QMetaEnum>
#include <QSizePolicy>
#include <QSpacerItem>
#include <QStringList>
#include <QWidget>

namespace KODMS::Tests {

inline QString policyName(QSizePolicy::Policy policy)
{
    return QString::fromLatin1(QMetaEnum::fromType<QSizePolicy::Policy>().valueToKey(policy));
}

/// A layout as text: its class and name, then what it holds, one line an item,
/// each level one blank further in. Widgets appear by name, spacers by size hint
/// and size policies.
inline QStringList layoutLines(const QLayout *layout, int depth = 0)
{
    const QString indent(depth, QLatin1Char(' '));
    QStringList lines{(indent + QString::fromLatin1(layout->metaObject()->className()) +
                       QLatin1Char(' ') + layout->objectName())};
    if (layout->objectName().isEmpty())
        lines.first().chop(1);
    for (int index = 0; index < layout->count(); ++index) {
        QLayoutItem *item = layout->itemAt(index);
        if (item->layout()) {
            lines << layoutLines(item->layout(), depth + 1);
        } else if (item->widget()) {
            lines << indent + QLatin1Char(' ') + item->widget()->objectName();
        } else if (const QSpacerItem *spacer = item->spacerItem()) {
            const QSize hint = spacer->sizeHint();
            lines << indent + QStringLiteral(" spacer %1x%2 %3 %4")
                                  .arg(hint.width())
                                  .arg(hint.height())
                                  .arg(policyName(spacer->sizePolicy().horizontalPolicy()),
                                       policyName(spacer->sizePolicy().verticalPolicy()));
        }
    }
    return lines;
}

} // namespace KODMS::Tests
