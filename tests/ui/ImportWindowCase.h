// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/ui/DMS_Import_Widget.h"
#include "tests/imports/support/ImportHome.h"

#include <QLabel>
#include <QList>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QUrl>

#include <memory>

namespace KODMS::Tests {

/// What tests of the import window do with the one they have open, for the job of the
/// house.
class ImportWindowCase : public QObject {
protected:
    UI::Import_Info info(const QString &flowGuid = {}, const QString &jobName = {}) const;

    /// As the desks do.
    void open(int mode = 0);
    void drop(const QList<QUrl> &urls) const;

    void drop(const QString &path) const { drop(QList<QUrl>{QUrl::fromLocalFile(path)}); }

    /// Of a label; empty when it is hidden.
    QString text(const char *name) const
    {
        const auto *label = m_window->findChild<QLabel *>(QLatin1String(name));
        return label && !label->isHidden() ? label->text() : QString();
    }

    QPushButton *button(const char *name) const
    {
        return m_window->findChild<QPushButton *>(QLatin1String(name));
    }

    void click(const char *name) const { QTest::mouseClick(button(name), Qt::LeftButton); }

    std::unique_ptr<ImportHome> m_home;
    QPointer<UI::DMS_Import_Widget> m_window;
};

} // namespace KODMS::Tests
