// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/Question.h"

#include <QMessageBox>
#include <QPointer>

namespace KODMS::Services {

bool askYesNo(QWidget &window, const QString &title, const QString &text)
{
    // Not the static function, whose box stands on the stack: it would be deleted with
    // the window all the same.
    const QPointer<QMessageBox> box = new QMessageBox(QMessageBox::Question, title, text,
                                                      QMessageBox::Yes | QMessageBox::No, &window);
    box->setDefaultButton(QMessageBox::No);
    box->setTextFormat(Qt::PlainText);
    const int answer = box->exec();
    if (!box)
        return false;
    delete box;
    return answer == QMessageBox::Yes;
}

} // namespace KODMS::Services
