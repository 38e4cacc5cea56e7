// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/DeskControls.h"

#include "desks/common/NamedControl.h"
#include "desks/common/StyleSheets.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSpacerItem>
#include <QTableWidget>

namespace KODMS::UI {

QSpacerItem *makeSpacer(int width, int height)
{
    return new QSpacerItem(width, height, QSizePolicy::Expanding, QSizePolicy::Minimum);
}

QLineEdit *makeFilter(const char *name, const char *hint, QWidget *parent)
{
    auto *edit = makeNamed<QLineEdit>(name, parent);
    edit->setPlaceholderText(QString::fromUtf8(hint));
    return edit;
}

QPushButton *makeButton(const char *name, const QString &caption, const QString &style,
                        QWidget *parent)
{
    auto *button = makeNamed<QPushButton>(name, caption, parent);
    button->setStyleSheet(style);
    return button;
}

QTableWidget *makeTable(const char *name, QWidget *parent)
{
    auto *table = makeNamed<QTableWidget>(name, parent);
    table->setStyleSheet(TableWidgetStyle);
    table->setAlternatingRowColors(true);
    return table;
}

} // namespace KODMS::UI
