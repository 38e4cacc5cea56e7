// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QPushButton>
#include <QQueue>
#include <QStringList>
#include <QTimer>

#include <functional>

namespace KODMS::Tests {

/// Presses a button on each message box that comes up, and keeps what it said. A box
/// without an answer is dismissed.
class BoxAnswers : public QObject {
public:
    BoxAnswers() { qApp->installEventFilter(this); }

    void answer(QMessageBox::StandardButton button) { m_answers.enqueue(button); }

    /// Done while the next box stands open, before it is answered.
    void meanwhile(std::function<void()> action) { m_action = std::move(action); }

    QStringList texts;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *box = qobject_cast<QMessageBox *>(watched);
        if (box && event->type() == QEvent::Show)
            QTimer::singleShot(0, box, [this, box] { press(*box); });
        return false;
    }

private:
    void press(QMessageBox &box)
    {
        texts << box.text();
        if (const auto action = std::exchange(m_action, {})) {
            const QPointer<QMessageBox> there(&box);
            action();
            if (!there)
                return;
        }
        if (m_answers.isEmpty())
            box.reject();
        else
            box.button(m_answers.dequeue())->click();
    }

    QQueue<QMessageBox::StandardButton> m_answers;
    std::function<void()> m_action;
};

} // namespace KODMS::Tests
