// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tasks/TaskRunner.h"
#include "tests/support/TestMain.h"
#include "tests/tasks/support/TaskSteps.h"

#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;

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
        QTRY_VERIFY(!TaskRunner::instance().isBusy());
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
        later(200, [&] { seen = taskDialog() != nullptr; });
        QVERIFY(runFor(300));
        QVERIFY(!seen);
        QVERIFY(!taskDialog());
    }

    void aLongTaskSaysWhatHowFarAndHowFast()
    {
        QString title;
        QString amount;
        QString rate;
        QString spoken; // of the bar, by a screen reader
        bool shownEarly = true;
        later(300, [&] { shownEarly = taskDialog() != nullptr; });
        later(1800, [&] {
            QVERIFY(taskDialog());
            title = taskDialog()->findChild<QLabel *>(QStringLiteral("taskTitle"))->text();
            amount = taskDialog()->findChild<QLabel *>(QStringLiteral("taskAmount"))->text();
            rate = taskDialog()->findChild<QLabel *>(QStringLiteral("taskRate"))->text();
            spoken =
                QAccessible::queryAccessibleInterface(taskDialog()->findChild<QProgressBar *>())
                    ->text(QAccessible::Name);
            pressCancel();
        });
        QVERIFY(!runFor(60000)); // however late this machine looks
        QVERIFY(!shownEarly);
        QCOMPARE(title, QStringLiteral("取出 web000001.tgz"));
        QCOMPARE(spoken, title);
        QVERIFY2(amount.contains(QStringLiteral(" / ")), qPrintable(amount));
        QVERIFY2(rate.contains(QLatin1Char('/')) && !rate.startsWith(QLatin1Char('0')),
                 qPrintable(rate));
        QVERIFY(!taskDialog());
    }

    void cancelEndsItQuickly()
    {
        QElapsedTimer sinceCancel;
        later(600, [&] {
            sinceCancel.start();
            pressCancel();
        });
        const Outcome outcome = runFor(10000);
        QCOMPARE(outcome.text, QStringLiteral("cancelled"));
        QVERIFY2(sinceCancel.elapsed() < 2000, qPrintable(QString::number(sinceCancel.elapsed())));
    }

    void closingTheDialogCancels()
    {
        later(600, [] { QTest::keyClick(taskDialog(), Qt::Key_Escape); });
        QVERIFY(!runFor(10000));
        QTRY_VERIFY(!TaskRunner::instance().isBusy());
        later(600, [] { taskDialog()->close(); });
        QVERIFY(!runFor(10000));
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
        QVERIFY(runFor(800));
        QTest::qWait(50);
        QCOMPARE(clicked.count(), 0);
        QCOMPARE(m_edit->text(), QString());
        QTest::mouseClick(m_button, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
    }

private:
    std::unique_ptr<QWidget> m_window;
    QLineEdit *m_edit = nullptr;
    QPushButton *m_button = nullptr;
};

KODMS_TEST_MAIN(TaskRunnerTest, QApplication)
#include "TaskRunnerTest.moc"
