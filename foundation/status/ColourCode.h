// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QBrush>
#include <QColor>
#include <QLatin1String>
#include <QString>
#include <QTableWidgetItem>

namespace KODMS::UI {

/// Gives `item` the text colour of `code` ("r", "dg", ...; upper and lower case
/// differ). An unknown code leaves the item as it is. Written here, since the page
/// bar needs it wherever somebody makes one.
inline void applyColourCode(const QString &code, QTableWidgetItem *item)
{
    struct Row {
        const char *code;
        Qt::GlobalColor colour;
    };

    static constexpr Row rows[] = {
        {"dg", Qt::darkGreen}, {"r", Qt::red},
        {"b", Qt::blue},       {"green", Qt::green},
        {"g", Qt::green},      {"darkYellow", Qt::darkYellow},
        {"white", Qt::white},  {"lightGray", Qt::lightGray},
        {"gray", Qt::gray},    {"darkRed", Qt::darkRed},
    };
    for (const Row &row : rows) {
        if (code == QLatin1String(row.code)) {
            item->setForeground(QBrush(QColor(row.colour)));
            return;
        }
    }
}

} // namespace KODMS::UI
