// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/ui/DMS_JobCheck_Widget.h"
#include "tests/ui/QuestionHome.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QUrl>

#include <memory>

namespace KODMS::Tests {

/// What tests of the question windows do with the one they have open.
class QuestionWindowCase : public QObject {
protected:
    template <typename Part> Part *part(const char *name) const
    {
        return m_window->findChild<Part *>(QLatin1String(name));
    }

    void click(const char *name) const
    {
        QTest::mouseClick(part<QPushButton>(name), Qt::LeftButton);
    }

    /// The text of a label; empty when it is hidden.
    QString label(const char *name) const
    {
        const auto *found = part<QLabel>(name);
        return found->isHidden() ? QString() : found->text();
    }

    QString message() const { return label("questionMessage"); }

    /// The one value of a query.
    QString value(const char *sql) const
    {
        return m_home->house.value(QString::fromUtf8(sql)).toString();
    }

    static void expect(const char *logged)
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QString::fromUtf8(logged)));
    }

    // For windows in which a question is raised.

    /// As the desk does.
    void turnTo(int flowId) const;
    void write(const QString &title, const QString &description = {}) const;
    void drop(const QList<QUrl> &urls) const;
    void drop(const QStringList &paths) const;
    int pictures() const;

    std::unique_ptr<QuestionHome> m_home;
    QPointer<UI::DMS_JobCheck_Widget> m_window;
};

} // namespace KODMS::Tests
