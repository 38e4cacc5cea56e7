// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/questions/QuestionParts.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QPushButton>
#include <QStyle>

namespace KODMS::Services {

QLabel *plainLabel(const char *name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QPushButton *namedButton(const char *name, const QString &text, QWidget *parent)
{
    auto *button = new QPushButton(text, parent);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
}

QHBoxLayout *fieldLabel(const QString &text, const QString &hint, QWidget *field)
{
    auto *label = new QLabel(text, field->parentWidget());
    label->setBuddy(field);
    auto *row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(label);
    QLabel *beside = plainLabel("questionHint", field->parentWidget());
    beside->setText(hint);
    row->addWidget(beside, 1);
    field->setAccessibleDescription(hint);
    return row;
}

MessageLine::MessageLine(QWidget *parent) : QLabel(parent)
{
    setObjectName(QStringLiteral("questionMessage"));
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    hide();
}

void MessageLine::say(const QString &text, bool isError)
{
    setText(text);
    setVisible(!text.isEmpty());
    setProperty("isError", isError);
    style()->unpolish(this); // the colour goes by the property
    style()->polish(this);
    if (text.isEmpty())
        return;
    QAccessibleEvent said(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

} // namespace KODMS::Services
