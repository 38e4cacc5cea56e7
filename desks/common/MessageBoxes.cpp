// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/MessageBoxes.h"

#include <QCoreApplication>
#include <QPointer>

namespace KODMS::UI {

namespace {

constexpr char Title[] = "Information";

/// The box is made on the heap: QMessageBox::information() keeps it on the stack,
/// where a desk that is deleted meanwhile would delete it a first time.
QMessageBox::StandardButton ask(QWidget *desk, const QString &title, const QString &text,
                                QMessageBox::StandardButtons buttons)
{
    if (!desk)
        return QMessageBox::NoButton;
    const QPointer<QMessageBox> box =
        new QMessageBox(QMessageBox::Information, title, text, buttons, desk);
    box->setDefaultButton(QMessageBox::Ok); // no effect on a box without it
    box->exec();
    if (!box)
        return QMessageBox::NoButton;
    const auto answer = box->standardButton(box->clickedButton());
    delete box;
    return answer;
}

QString usualTitle(const QWidget *desk)
{
    if (!desk)
        return {}; // there will be no box
    return QCoreApplication::translate(desk->metaObject()->className(), Title);
}

} // namespace

void inform(QWidget *desk, const char *text)
{
    inform(desk, QString::fromUtf8(text));
}

void inform(QWidget *desk, const QString &text)
{
    inform(desk, usualTitle(desk), text);
}

void inform(QWidget *desk, const QString &title, const QString &text)
{
    ask(desk, title, text, QMessageBox::Ok);
}

bool confirm(QWidget *desk, const char *text, QMessageBox::StandardButtons buttons)
{
    return confirm(desk, QString::fromUtf8(text), buttons);
}

bool confirm(QWidget *desk, const QString &text, QMessageBox::StandardButtons buttons)
{
    return ask(desk, usualTitle(desk), text, buttons) == QMessageBox::Yes;
}

} // namespace KODMS::UI
