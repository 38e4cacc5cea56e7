// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QObject>
#include <QPushButton>
#include <QTimer>

namespace KODMS::Tests {

/// Answers every message box while it lives: yes where it can, else with the only button.
class YesSayer : public QObject {
public:
    YesSayer() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *box = event->type() == QEvent::Show ? qobject_cast<QMessageBox *>(watched) : nullptr;
        if (box)
            QTimer::singleShot(0, box, [box] {
                QAbstractButton *yes = box->button(QMessageBox::Yes);
                (yes ? yes : box->buttons().first())->click();
            });
        return false;
    }
};

} // namespace KODMS::Tests
