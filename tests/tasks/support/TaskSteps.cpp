// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/tasks/support/TaskSteps.h"

#include "services/tasks/TaskRunner.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QTimer>

using namespace KODMS::Services;

namespace KODMS::Tests {

namespace {

template <typename Window> Window *visible()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        auto *found = qobject_cast<Window *>(window);
        if (found && found->isVisible())
            return found;
    }
    return nullptr;
}

} // namespace

Outcome workFor(Progress &progress, int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    progress.setTotal(milliseconds);
    while (timer.elapsed() < milliseconds) {
        if (progress.isCancelled())
            return Outcome::failure(QStringLiteral("cancelled"));
        QThread::msleep(5);
        progress.advance(5);
    }
    return Outcome::success();
}

Outcome runFor(int milliseconds)
{
    return TaskRunner::instance().run(
        QStringLiteral("取出 web000001.tgz"),
        [=](Progress &progress) { return workFor(progress, milliseconds); });
}

TaskDialog *taskDialog()
{
    return visible<TaskDialog>();
}

QMessageBox *messageBox()
{
    return visible<QMessageBox>();
}

void pressCancel()
{
    QVERIFY(taskDialog());
    QTest::mouseClick(taskDialog()->findChild<QPushButton *>(QStringLiteral("taskCancel")),
                      Qt::LeftButton);
}

void later(int milliseconds, const std::function<void()> &action)
{
    QTimer::singleShot(milliseconds, QCoreApplication::instance(), action);
}

void fromTheEventLoop(const std::function<void()> &action)
{
    QEventLoop loop;
    later(0, [&] {
        action();
        later(20, [&loop] { loop.quit(); });
    });
    loop.exec();
}

void showBox(int milliseconds)
{
    QMessageBox box(QMessageBox::Information, QStringLiteral("Information"),
                    QStringLiteral("One row failed"), QMessageBox::Ok);
    QTimer::singleShot(milliseconds, &box,
                       [&box] { QTest::keyClick(box.button(QMessageBox::Ok), Qt::Key_Space); });
    box.exec();
}

} // namespace KODMS::Tests
