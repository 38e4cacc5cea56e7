// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLoggingCategory>

namespace KODMS::Tests {

/// While it lives, every category says its information too: the test run turns that
/// off to keep its own output short.
class InformationShown {
public:
    InformationShown() { before() = QLoggingCategory::installFilter(show); }

    ~InformationShown() { QLoggingCategory::installFilter(before()); }

    InformationShown(const InformationShown &) = delete;
    InformationShown &operator=(const InformationShown &) = delete;

private:
    static QLoggingCategory::CategoryFilter &before()
    {
        static QLoggingCategory::CategoryFilter filter = nullptr;
        return filter;
    }

    static void show(QLoggingCategory *category)
    {
        if (before()) // not yet while it is being installed
            before()(category);
        category->setEnabled(QtInfoMsg, true);
    }
};

} // namespace KODMS::Tests
