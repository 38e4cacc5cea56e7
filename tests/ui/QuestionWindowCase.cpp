// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/QuestionWindowCase.h"

#include "services/ui/questions/RaiseForm.h"

#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>

namespace KODMS::Tests {

void QuestionWindowCase::turnTo(int flowId) const
{
    m_window->m_id = flowId;
    m_window->show();
}

void QuestionWindowCase::write(const QString &title, const QString &description) const
{
    part<QLineEdit>("questionTitleEdit")->setText(title);
    part<QPlainTextEdit>("questionDescriptionEdit")->setPlainText(description);
}

void QuestionWindowCase::drop(const QList<QUrl> &urls) const
{
    auto *form = m_window->findChild<Services::RaiseForm *>();
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(form, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(form, &event);
    QCOMPARE(event.dropAction(), Qt::CopyAction);
}

void QuestionWindowCase::drop(const QStringList &paths) const
{
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls << QUrl::fromLocalFile(path);
    drop(urls);
}

int QuestionWindowCase::pictures() const
{
    return part<QListWidget>("questionPictures")->count();
}

} // namespace KODMS::Tests
