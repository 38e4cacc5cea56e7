// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/notices/NoticeHub.h"
#include "services/tasks/TaskRunner.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"
#include "tests/tasks/support/RepaintClock.h"
#include "tests/tasks/support/TaskSteps.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// What may happen in the event loop in which a task is waited for.
class TaskWaitTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theWindowStaysWhenClosed();
    void theWindowMayBeDeleted();
    void theDialogOutlivesItsWindow();
    void quittingCancelsAndReturns();
    void noticesOfTheWorkArriveMeanwhile();
    void windowsAreRepainted();
    void aBoxOpenedMeanwhileCanBeAnsweredAfterwards();
    void aBoxOpenedMeanwhileDoesNotHideTheCancelButton_data();
    void aBoxOpenedMeanwhileDoesNotHideTheCancelButton();
    void aTaskWithinATaskRunsBesideIt();
    void aTaskWithinTheWorkRunsInPlace();
    void aTaskWithinATaskIsCancelledWithIt();
    void aTaskThatOutlastsTheOuterOneKeepsTheInputOut();

private:
    std::unique_ptr<RepaintClock> m_window;
    QPushButton *m_button = nullptr;
};

void TaskWaitTest::init()
{
    m_window = std::make_unique<RepaintClock>();
    m_button = new QPushButton(m_window.get());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void TaskWaitTest::cleanup()
{
    m_window.reset();
    QTRY_VERIFY(!TaskRunner::instance().isBusy());
}

void TaskWaitTest::theWindowStaysWhenClosed()
{
    for (const int when : {100, 600}) {
        bool closed = true;
        later(when, [&] { closed = m_window->close(); });
        QVERIFY(runFor(800));
        QVERIFY(!closed);
        QVERIFY(m_window->isVisible());
    }
    QVERIFY(m_window->close());
}

void TaskWaitTest::theWindowMayBeDeleted()
{
    for (const int when : {100, 600}) {
        init();
        later(when, [this] { m_window.reset(); });
        QVERIFY(runFor(900));
        QVERIFY(!m_window);
        QVERIFY(!taskDialog());
    }
}

void TaskWaitTest::theDialogOutlivesItsWindow()
{
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QPointer<TaskDialog> first;
    later(600, [&] {
        first = taskDialog();
        QVERIFY(first);
        QCOMPARE(first->parentWidget(), m_window.get());
        m_window.reset();
    });
    later(900, [] { pressCancel(); });
    const Outcome outcome = runFor(20000);
    QVERIFY(outcome.isCancelled);
    QVERIFY(!first);
    QVERIFY(!taskDialog());
}

void TaskWaitTest::quittingCancelsAndReturns()
{
    bool hasReturned = false;
    later(0, [&] { hasReturned = !runFor(20000); });
    later(600, [] { QCoreApplication::quit(); });
    QElapsedTimer timer;
    timer.start();
    QCoreApplication::exec();
    QVERIFY(hasReturned);
    QVERIFY(timer.elapsed() < 10000);
}

void TaskWaitTest::noticesOfTheWorkArriveMeanwhile()
{
    const NoticeLog log;
    int meanwhile = 0;
    later(300, [&] { meanwhile = log.notices.size(); });
    QVERIFY(TaskRunner::instance().run(QString(), [](Progress &progress) {
        NoticeHub::instance().raise(NoticeLevel::Warning, QStringLiteral("one"));
        NoticeHub::instance().raise(NoticeLevel::Error, QStringLiteral("two"));
        return workFor(progress, 600);
    }));
    QCOMPARE(meanwhile, 2);
    QCOMPARE(log.notices.size(), 2);
    QCOMPARE(log.notices.first().text, QStringLiteral("one"));
    QCOMPARE(log.notices.last().level, static_cast<int>(NoticeLevel::Error));
}

/// Generous, for a machine under load; what a quiet one does, the long test measures.
void TaskWaitTest::windowsAreRepainted()
{
    m_window->start();
    QVERIFY(runFor(1500));
    QVERIFY2(m_window->count() >= 15, qPrintable(m_window->text()));
    QVERIFY2(m_window->longestMs() < 600, qPrintable(m_window->text()));
}

void TaskWaitTest::aBoxOpenedMeanwhileCanBeAnsweredAfterwards()
{
    bool swallowed = false;
    later(50, [] {
        QMessageBox box(QMessageBox::Information, QString(), QStringLiteral("opened by a timer"));
        box.addButton(QMessageBox::Ok);
        box.exec();
    });
    later(200, [&] {
        QVERIFY(messageBox());
        QTest::keyClick(messageBox()->button(QMessageBox::Ok), Qt::Key_Space);
        swallowed = messageBox() != nullptr;
    });
    later(900, [] {
        QVERIFY(messageBox());
        QTest::keyClick(messageBox()->button(QMessageBox::Ok), Qt::Key_Space);
    });
    QVERIFY(runFor(600));
    QVERIFY(swallowed);
    QVERIFY(!messageBox());
}

void TaskWaitTest::aBoxOpenedMeanwhileDoesNotHideTheCancelButton_data()
{
    QTest::addColumn<int>("when");
    QTest::newRow("before the progress dialog shows") << 100;
    QTest::newRow("over the progress dialog") << 600;
}

void TaskWaitTest::aBoxOpenedMeanwhileDoesNotHideTheCancelButton()
{
    QFETCH(int, when);
    later(when, [] {
        QMessageBox box(QMessageBox::Information, QString(), QStringLiteral("opened by a timer"));
        box.addButton(QMessageBox::Ok);
        box.exec();
    });
    later(1200, [] {
        QVERIFY(taskDialog());
        QCOMPARE(QApplication::activeModalWidget(), taskDialog());
        pressCancel();
        later(300, [] {
            QVERIFY(messageBox());
            QCOMPARE(QApplication::activeModalWidget(), messageBox());
            QTest::keyClick(messageBox()->button(QMessageBox::Ok), Qt::Key_Space);
        });
    });
    QVERIFY(runFor(20000).isCancelled);
    QVERIFY(!messageBox());
}

/// A timer of the host may start something while a task waits.
void TaskWaitTest::aTaskWithinATaskRunsBesideIt()
{
    Outcome inner = Outcome::failure(QStringLiteral("never ran"));
    QThread *thread = nullptr;
    later(100, [&] {
        m_window->start();
        inner = TaskRunner::instance().run(QString(), [&](Progress &progress) {
            thread = QThread::currentThread();
            return workFor(progress, 1000);
        });
    });
    QVERIFY(runFor(1500));
    QVERIFY(inner);
    QVERIFY(thread && thread != QThread::currentThread());
    QVERIFY2(m_window->longestMs() < 600, qPrintable(m_window->text()));
}

void TaskWaitTest::aTaskWithinTheWorkRunsInPlace()
{
    QThread *outer = nullptr;
    QThread *inner = nullptr;
    QVERIFY(TaskRunner::instance().run(QString(), [&](Progress &) {
        outer = QThread::currentThread();
        return TaskRunner::instance().run(QString(), [&](Progress &) {
            inner = QThread::currentThread();
            return Outcome::success();
        });
    }));
    QVERIFY(outer != QThread::currentThread());
    QCOMPARE(inner, outer);
}

void TaskWaitTest::aTaskWithinATaskIsCancelledWithIt()
{
    Outcome inner;
    later(100, [&] { inner = runFor(20000); });
    later(800, [] { pressCancel(); });
    QVERIFY(runFor(20000).isCancelled);
    QVERIFY(inner.isCancelled);
}

void TaskWaitTest::aTaskThatOutlastsTheOuterOneKeepsTheInputOut()
{
    const QSignalSpy clicked(m_button, &QPushButton::clicked);
    Outcome inner = Outcome::failure(QStringLiteral("never ran"));
    later(100, [&] { inner = runFor(1000); });
    later(600, [&] { QTest::mouseClick(m_button, Qt::LeftButton); });
    QVERIFY(runFor(200));
    QVERIFY(inner);
    QCOMPARE(clicked.count(), 0);
    QTest::mouseClick(m_button, Qt::LeftButton);
    QCOMPARE(clicked.count(), 1);
}

KODMS_TEST_MAIN(TaskWaitTest, QApplication)
#include "TaskWaitTest.moc"
