// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/fakes/FakeServices.h"
#include "tests/fakes/MessageBoxProbe.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>

#include <functional>
#include <map>
#include <utility>

namespace KODMS::Tests {

/// Notes message boxes among the calls of the services, so that one list tells in
/// which order everything happened, and lets something happen while a box waits.
/// GUI thread; one at a time.
class BoxStory : public QObject {
public:
    BoxStory() { qApp->installEventFilter(this); }

    ~BoxStory() override { qApp->removeEventFilter(this); }

    /// The next question is answered with this button.
    void answer(QMessageBox::StandardButton button) { probe.answer(button); }

    /// Done before the box with this text is answered.
    void whileOpen(const char *text, std::function<void()> deed)
    {
        m_deeds[QString::fromUtf8(text)] = std::move(deed);
    }

    /// Calls (without questions for rights, user and configuration) and box("text").
    static QStringList lines() { return Fakes::FakeServices::instance().operationLines(); }

    static QString text() { return lines().join(QLatin1Char('\n')); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *box = event->type() == QEvent::Show ? qobject_cast<QMessageBox *>(watched) : nullptr;
        if (!box)
            return false;
        Fakes::FakeServices::instance().record("box", box->text());
        const auto deed = m_deeds.find(box->text());
        if (deed != m_deeds.end())
            QTimer::singleShot(0, this, deed->second);
        return false;
    }

    Fakes::MessageBoxProbe probe;

private:
    std::map<QString, std::function<void()>> m_deeds;
};

} // namespace KODMS::Tests
