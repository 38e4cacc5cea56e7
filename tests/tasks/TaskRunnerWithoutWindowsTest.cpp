// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tasks/TaskRunner.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <stdexcept>

using namespace KODMS::Services;

/// Tools and services: no windows, so nothing to keep alive meanwhile.
class TaskRunnerWithoutWindowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void runsInPlace()
    {
        QThread *thread = nullptr;
        const Outcome outcome = TaskRunner::instance().run(QString(), [&](Progress &progress) {
            thread = QThread::currentThread();
            return progress.isCancelled() ? Outcome::failure(QStringLiteral("?"))
                                          : Outcome::success();
        });
        QVERIFY(outcome);
        QCOMPARE(thread, QThread::currentThread());
    }

    void failuresAreHandedOn()
    {
        const Outcome outcome = TaskRunner::instance().run(
            QString(), [](Progress &) { return Outcome::failure(QStringLiteral("no")); });
        QCOMPARE(outcome.text, QStringLiteral("no"));
    }

    void whatIsThrownBecomesAFailure()
    {
        const Outcome outcome = TaskRunner::instance().run(
            QString(), [](Progress &) -> Outcome { throw std::runtime_error("out of luck"); });
        QVERIFY(!outcome);
        QVERIFY(outcome.text.contains(QStringLiteral("out of luck")));
    }

    void idleComesOnceAfterARowOfTasks()
    {
        QTRY_VERIFY(!TaskRunner::instance().isBusy());
        QSignalSpy idle(&TaskRunner::instance(), &TaskRunner::idle);
        for (int i = 0; i < 3; ++i) {
            const Outcome outcome = TaskRunner::instance().run(QString(), [](Progress &) {
                return TaskRunner::instance().isBusy() ? Outcome::success()
                                                       : Outcome::failure(QStringLiteral("?"));
            });
            QVERIFY(outcome);
            QVERIFY(TaskRunner::instance().isBusy());
        }
        QCOMPARE(idle.count(), 0);
        QTRY_COMPARE(idle.count(), 1);
        QVERIFY(!TaskRunner::instance().isBusy());
    }
};

KODMS_TEST_MAIN(TaskRunnerWithoutWindowsTest, QCoreApplication)
#include "TaskRunnerWithoutWindowsTest.moc"
