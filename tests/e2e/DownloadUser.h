// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desks/download/DMS_Download_Widget.h"
#include "tests/e2e/DeskUser.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTest>

namespace KODMS::Tests {

/// Somebody at an original-file desk.
class DownloadUser : public DeskUser {
public:
    enum Column {
        OrigName = 0,
        HistoryJobName = 1,
        Serial = 4,
        FileId = 6,
        FlowGuid = 9,
        Executor = 14
    };

    DownloadUser() : DeskUser(std::make_unique<UI::DMS_Download_Widget>(nullptr)) {}

    /// Walks down the combo by key, from its first item.
    void choose(int item) const
    {
        auto *combo = control<QComboBox>("m_pFilterCMB");
        combo->setFocus();
        for (int step = 0; step < item; ++step)
            QTest::keyClick(combo, Qt::Key_Down);
        QCOMPARE(combo->currentIndex(), item);
    }

    void type(const QString &text) const
    {
        QTest::keyClicks(control<QLineEdit>("m_pFilterLE"), text);
    }
};

} // namespace KODMS::Tests
