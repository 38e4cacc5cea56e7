// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/ImportUser.h"

#include "tests/e2e/Drop.h"

#include <QApplication>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace KODMS::Tests {

ImportUser::ImportUser()
{
    for (QWidget *window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->inherits("KODMS::UI::DMS_Import_Widget"))
            m_window = window;
}

QString ImportUser::text(const char *label) const
{
    return m_window->findChild<QLabel *>(QLatin1String(label))->text();
}

void ImportUser::drop(const QString &path) const
{
    dropPath(*m_window->findChild<QFrame *>(QStringLiteral("importDropArea")), path);
}

void ImportUser::import() const
{
    auto *button = m_window->findChild<QPushButton *>(QStringLiteral("importJob"));
    QVERIFY(button->isEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
}

} // namespace KODMS::Tests
