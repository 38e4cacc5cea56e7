// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tasks/TaskRunner.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"
#include "tests/tasks/support/TaskSteps.h"

#include <QApplication>
#include <QDialog>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// Several tasks that belong to one press on a button.
class TaskActionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void idleComesAfterTheLastTask();
    void aBoxBetweenTheRowsEndsNothing();
    void aDialogIsALevelOfItsOwn();
    void cancellingEndsTheRemainingRows();
    void aBoxAfterTheCancelChangesNothing();
    void aCancelThatCameTooLateEndsTheRestAllTheSame();
    void theNextActionWorksAgain();
    void quittingEndsTheRemainingRows();

private:
    TaskRunner &runner() { return TaskRunner::instance(); }

    Outcome countedRow()
    {
        return runner().run(QStringLiteral("row"), [this](Progress &) {
            ++m_rowsDone;
            return Outcome::success();
        });
    }

    std::unique_ptr<QWidget> m_window;
    int m_rowsDone = 0;
};

void TaskActionTest::init()
{
    m_rowsDone = 0;
    m_window = std::make_unique<QWidget>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QVERIFY(!runner().isBusy());
}

void TaskActionTest::cleanup()
{
    m_window.reset();
    QTRY_VERIFY(!runner().isBusy());
}

void TaskActionTest::idleComesAfterTheLastTask()
{
    const QSignalSpy idle(&runner(), &TaskRunner::idle);
    fromTheEventLoop([&] {
        QVERIFY(runFor(30));
        QCoreApplication::processEvents();
        QVERIFY(runner().isBusy());
        QVERIFY(runFor(30));
        QCOMPARE(idle.count(), 0);
    });
    QCOMPARE(idle.count(), 1);
    QVERIFY(!runner().isBusy());
}

void TaskActionTest::aBoxBetweenTheRowsEndsNothing()
{
    const QSignalSpy idle(&runner(), &TaskRunner::idle);
    fromTheEventLoop([&] {
        QVERIFY(runFor(20));
        showBox(100);
        QCOMPARE(idle.count(), 0);
        QVERIFY(runner().isBusy());
        QVERIFY(runFor(20));
        showBox(100);
        QCOMPARE(idle.count(), 0);
    });
    QCOMPARE(idle.count(), 1);
}

/// Who works inside an open dialog is not made to wait for its end.
void TaskActionTest::aDialogIsALevelOfItsOwn()
{
    const QSignalSpy idle(&runner(), &TaskRunner::idle);
    int whileOpen = -1;
    fromTheEventLoop([&] {
        QDialog dialog(m_window.get());
        later(20, [] { QVERIFY(runFor(20)); });
        later(400, [&] {
            whileOpen = idle.count();
            dialog.accept();
        });
        dialog.exec();
    });
    QCOMPARE(whileOpen, 1);
    QCOMPARE(idle.count(), 1);
}

void TaskActionTest::cancellingEndsTheRemainingRows()
{
    const NoticeLog log;
    fromTheEventLoop([&] {
        QVERIFY(countedRow());
        later(600, [] { pressCancel(); });
        const Outcome cancelled = runFor(20000);
        QVERIFY(!cancelled);
        QVERIFY(cancelled.isCancelled);
        for (int row = 0; row < 5; ++row) {
            const Outcome refused = countedRow();
            QVERIFY(!refused);
            QVERIFY(refused.isCancelled);
            QVERIFY(!refused.text.isEmpty());
        }
    });
    QCOMPARE(m_rowsDone, 1);
    QCOMPARE(log.notices.size(), 1);
    QCOMPARE(log.notices.first().level, static_cast<int>(NoticeLevel::Information));
    QVERIFY(log.notices.first().text.contains(QStringLiteral("web000001.tgz")));
}

void TaskActionTest::aBoxAfterTheCancelChangesNothing()
{
    fromTheEventLoop([&] {
        later(600, [] { pressCancel(); });
        QVERIFY(!runFor(20000));
        showBox(100);
        QVERIFY(!countedRow());
        showBox(100);
        QVERIFY(!countedRow());
    });
    QCOMPARE(m_rowsDone, 0);
}

void TaskActionTest::aCancelThatCameTooLateEndsTheRestAllTheSame()
{
    fromTheEventLoop([&] {
        later(600, [] { pressCancel(); });
        const Outcome done = runner().run(QStringLiteral("deaf"), [](Progress &progress) {
            while (!progress.isCancelled())
                QTest::qSleep(5);
            return Outcome::success();
        });
        QVERIFY(done);
        QVERIFY(!done.isCancelled);
        QVERIFY(!countedRow());
    });
    QCOMPARE(m_rowsDone, 0);
}

void TaskActionTest::theNextActionWorksAgain()
{
    fromTheEventLoop([&] {
        later(600, [] { pressCancel(); });
        QVERIFY(!runFor(20000));
        QVERIFY(!countedRow());
    });
    fromTheEventLoop([&] { QVERIFY(countedRow()); });
    QCOMPARE(m_rowsDone, 1);
}

void TaskActionTest::quittingEndsTheRemainingRows()
{
    bool isReached = false;
    later(0, [&] {
        QVERIFY(!runFor(20000));
        QVERIFY(!countedRow());
        isReached = true;
    });
    later(200, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
    QVERIFY(isReached);
    QCOMPARE(m_rowsDone, 0);
}

KODMS_TEST_MAIN(TaskActionTest, QApplication)
#include "TaskActionTest.moc"
