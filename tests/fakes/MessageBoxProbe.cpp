// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/fakes/MessageBoxProbe.h"

#include <QApplication>
#include <QEvent>
#include <QPushButton>
#include <QTimer>

namespace KODMS::Fakes {

MessageBoxProbe::MessageBoxProbe()
{
    qApp->installEventFilter(this);
}

MessageBoxProbe::~MessageBoxProbe()
{
    qApp->removeEventFilter(this);
}

QStringList MessageBoxProbe::texts() const
{
    QStringList texts;
    for (const SeenBox &box : m_boxes)
        texts << box.text;
    return texts;
}

bool MessageBoxProbe::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = event->type() == QEvent::Show ? qobject_cast<QMessageBox *>(watched) : nullptr;
    if (box) {
        // The box is asked before it handles its own show event, which is where
        // Qt adds buttons and a default that the caller did not name.
        const auto defaultButton = box->standardButton(box->defaultButton());
        m_boxes.append({box->windowTitle(), box->text(), box->standardButtons(), defaultButton,
                        box->icon(), box->parentWidget()});
        QTimer::singleShot(0, box, [this, box] { press(box); });
    }
    return false;
}

void MessageBoxProbe::press(QMessageBox *box)
{
    const auto wanted = m_answers.isEmpty() ? QMessageBox::NoButton : m_answers.dequeue();
    if (QAbstractButton *button = box->button(wanted)) {
        button->click();
        return;
    }
    if (wanted != QMessageBox::NoButton)
        qWarning("The message box \"%s\" does not have the button to be pressed",
                 qPrintable(box->text()));
    const auto buttons = box->buttons();
    if (buttons.size() == 1)
        buttons.first()->click();
    else
        box->reject();
}

} // namespace KODMS::Fakes
