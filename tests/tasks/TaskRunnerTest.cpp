// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tasks/TaskRunner.h"
#include "services/tasks/TaskDialog.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <atomic>

using namespace KODMS::Services;

namespace {

/// Works in small pieces until told to stop or cancelled.
Outcome work(Progress &progress, int milliseconds)
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

Outcome run(int milliseconds)
{
    return TaskRunner::instance().run(
        QStringLiteral("取出 web000001.tgz"),
        [=](Progress &progress) { return work(progress, milliseconds); });
}

TaskDialog *dialog()
{
    for (QWidget *window : QApplication::topLevelWidgets())
        if (auto *found = qobject_cast<TaskDialog *>(window))
            return found;
    return nullptr;
}

void later(int milliseconds, const std::function<void()> &action)
{
    QTimer::singleShot(milliseconds, QCoreApplication::instance(), action);
}

/// Counts how long the event loop ever stood still.
class Heartbeat : public QObject {
public:
    Heartbeat()
    {
        connect(&m_timer, &QTimer::timeout, this,
                [this] { longest = qMax(longest, m_since.restart()); });
        m_since.start();
        m_timer.start(10);
    }

    qint64 longest = 0;

private:
    QTimer m_timer;
    QElapsedTimer m_since;
};

} // namespace

class TaskRunnerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_window = std::make_unique<QWidget>();
        m_edit = new QLineEdit(m_window.get());
        m_button = new QPushButton(m_window.get());
        m_button->move(0, 50);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        QCoreApplication::processEvents();
    }

    void worksOnAThreadOfItsOwn()
    {
        QThread *thread = QThread::currentThread();
        const Outcome outcome = TaskRunner::instance().run(QString(), [&](Progress &) {
            thread = QThread::currentThread();
            return Outcome::success();
        });
        QVERIFY(outcome);
        QVERIFY(thread != QThread::currentThread());
    }

    void aShortTaskShowsNothing()
    {
        bool seen = false;
        later(200, [&] { seen = dialog() != nullptr; });
        QVERIFY(run(300));
        QVERIFY(!seen);
        QVERIFY(!dialog());
    }

    void aLongTaskSaysWhatHowFarAndHowFast()
    {
        QString title;
        QString amount;
        QString rate;
        bool shownEarly = true;
        later(300, [&] { shownEarly = dialog() != nullptr; });
        later(1800, [&] {
            QVERIFY(dialog());
            title = dialog()->findChild<QLabel *>(QStringLiteral("taskTitle"))->text();
            amount = dialog()->findChild<QLabel *>(QStringLiteral("taskAmount"))->text();
            rate = dialog()->findChild<QLabel *>(QStringLiteral("taskRate"))->text();
        });
        QVERIFY(run(2000));
        QVERIFY(!shownEarly);
        QCOMPARE(title, QStringLiteral("取出 web000001.tgz"));
        QVERIFY2(amount.contains(QStringLiteral(" / ")), qPrintable(amount));
        QVERIFY2(rate.contains(QLatin1Char('/')) && !rate.startsWith(QLatin1Char('0')),
                 qPrintable(rate));
        QVERIFY(!dialog());
    }

    void cancelEndsItQuickly()
    {
        QElapsedTimer sinceCancel;
        later(600, [&] {
            sinceCancel.start();
            dialog()->findChild<QPushButton *>(QStringLiteral("taskCancel"))->click();
        });
        const Outcome outcome = run(10000);
        QCOMPARE(outcome.text, QStringLiteral("cancelled"));
        QVERIFY(sinceCancel.elapsed() < 200);
    }

    void closingTheDialogCancels()
    {
        later(600, [] { QTest::keyClick(dialog(), Qt::Key_Escape); });
        QVERIFY(!run(10000));
        later(600, [] { dialog()->close(); });
        QVERIFY(!run(10000));
    }

    /// Swallowed, not delayed: nothing of it may act after the task either.
    void inputDoesNotReachTheWindows()
    {
        QSignalSpy clicked(m_button, &QPushButton::clicked);
        for (const int when : {50, 600})
            later(when, [this] {
                QTest::mouseClick(m_button, Qt::LeftButton);
                QTest::keyClicks(m_edit, QStringLiteral("typed"));
                QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                                  m_button->geometry().center());
            });
        QVERIFY(run(800));
        QTest::qWait(50);
        QCOMPARE(clicked.count(), 0);
        QCOMPARE(m_edit->text(), QString());
        QTest::mouseClick(m_button, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
    }

    void theWindowStaysWhenClosed()
    {
        bool closed = true;
        later(100, [&] { closed = m_window->close(); });
        QVERIFY(run(300));
        QVERIFY(!closed);
        QVERIFY(m_window->isVisible());
        QVERIFY(m_window->close());
    }

    void theWindowMayBeDeleted()
    {
        later(600, [this] { m_window.reset(); });
        QVERIFY(run(900));
        QVERIFY(!m_window);
        QVERIFY(!dialog());
    }

    void quittingCancelsAndReturns()
    {
        bool hasReturned = false;
        QElapsedTimer sinceQuit;
        later(0, [&] {
            const Outcome outcome = run(10000);
            hasReturned = !outcome;
        });
        later(200, [&] {
            sinceQuit.start();
            QCoreApplication::quit();
        });
        QCoreApplication::exec();
        QVERIFY(hasReturned);
        QVERIFY(sinceQuit.elapsed() < 400);
    }

    /// A timer of the host may start something while a task waits.
    void aTaskWithinATask()
    {
        Outcome inner = Outcome::failure(QStringLiteral("never ran"));
        later(100, [&] { inner = run(50); });
        QVERIFY(run(400));
        QVERIFY(inner);
    }

    void eventsAreDeliveredMeanwhile()
    {
        Heartbeat heartbeat;
        QVERIFY(run(1000));
        QVERIFY2(heartbeat.longest < 100, qPrintable(QString::number(heartbeat.longest)));
    }

    void idleComesAfterTheLastTask()
    {
        QCoreApplication::processEvents();
        QSignalSpy idle(&TaskRunner::instance(), &TaskRunner::idle);
        QVERIFY(run(50));
        QVERIFY(TaskRunner::instance().isBusy());
        QVERIFY(run(50));
        QCOMPARE(idle.count(), 0);
        QTRY_COMPARE(idle.count(), 1);
        QVERIFY(!TaskRunner::instance().isBusy());
    }

private:
    std::unique_ptr<QWidget> m_window;
    QLineEdit *m_edit = nullptr;
    QPushButton *m_button = nullptr;
};

KODMS_TEST_MAIN(TaskRunnerTest, QApplication)
#include "TaskRunnerTest.moc"
