// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/fakes/FakeServices.h"

#include <QApplication>
#include <QEvent>

namespace KODMS::Tests {

/// Notes among the calls of the services when a window of another library is shown
/// and when it is raised, and removes what is left of these windows at the end:
/// some belong to nobody. GUI thread; one at a time.
class WindowStory : public QObject {
public:
    WindowStory() { qApp->installEventFilter(this); }

    ~WindowStory() override
    {
        qApp->removeEventFilter(this);
        for (const auto &made : qAsConst(Fakes::FakeServices::instance().windows))
            delete made.window;
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto &services = Fakes::FakeServices::instance();
        for (const auto &made : qAsConst(services.windows))
            if (made.window == watched && event->type() == QEvent::Show)
                services.record("shown");
            else if (made.window == watched && event->type() == QEvent::ZOrderChange)
                services.record("raised");
        return false;
    }
};

} // namespace KODMS::Tests
