// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_UICommon.h"
#include "services/records/bll/QuestionChanges.h"
#include "tests/support/TestMain.h"
#include "tests/ui/BoxAnswers.h"
#include "tests/ui/QuestionWindowCase.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTimer>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using KODMS::UI::DMS_JobCheck_Widget;
using KODMS::UI::DMS_UICommon;

/// The window in which a question is raised, by clicks and keys, on running services.
class RaiseWindowTest : public QuestionWindowCase {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void isAWindowThatSaysItsJob();
    void raisesByClicks();
    void raisesByKeys();
    void everyPartHasANameForScreenReaders();
    void aQuestionNeedsATitle();
    void aTitleEndsAtItsLongest();
    void aJobThatWentElsewhere();
    void aJobThatIsGone();
    void anotherJobAsksFirst();
    void theSameJobKeepsWhatIsWritten();
    void anEmptyWindowMovesWithoutAsking();
    void aRefusedJobDoesNotDropWhatIsWritten();
    void turningDuringAQuestionIsRefused();
    void closingDuringAQuestionIsRefused();
    void anOpenWindowComesToTheFront();
    void signingOutClosesAndDeletes();
    void deletedDuringAQuestion();
    void raisesNoRefresh();

private:
    QString target() const { return label("questionTarget"); }

    QString m_empty; ///< the stock before
};

void RaiseWindowTest::init()
{
    m_home = std::make_unique<QuestionHome>();
    m_empty = m_home->stock();
    m_window = new DMS_JobCheck_Widget(m_home->job.flowId, false, nullptr);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void RaiseWindowTest::cleanup()
{
    delete m_window;
    m_home.reset();
    QApplication::clipboard()->clear();
}

void RaiseWindowTest::isAWindowThatSaysItsJob()
{
    QWidget parent;
    const DMS_JobCheck_Widget child(m_home->job.flowId, false, &parent);
    QVERIFY(child.isWindow());
    QCOMPARE(m_window->windowTitle(), QStringLiteral("创建问题"));
    QCOMPARE(target(), QStringLiteral("料号：") + m_home->job.jobName);
    QCOMPARE(m_window->m_id, m_home->job.flowId);
}

void RaiseWindowTest::raisesByClicks()
{
    write(QStringLiteral(" 孔径 "), QStringLiteral("第三层\n偏小"));
    click("questionSubmit");
    QCOMPARE(value("SELECT flow_id || '/' || title || '/' || description || '/' || check_flag || "
                   "'/' || create_user_id FROM questions"),
             QStringLiteral("%1/孔径/第三层\n偏小/0/%2").arg(m_home->job.flowId).arg(m_home->user));
    QCOMPARE(message(), QStringLiteral("已为 %1 创建问题：孔径").arg(m_home->job.jobName));
    QVERIFY(part<QLineEdit>("questionTitleEdit")->text().isEmpty());
    QVERIFY(part<QPlainTextEdit>("questionDescriptionEdit")->toPlainText().isEmpty());
    click("questionClose");
    QVERIFY(m_window->isHidden());
}

void RaiseWindowTest::raisesByKeys()
{
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    part<QLineEdit>("questionTitleEdit")->setFocus();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("drill"));
    QStringList way;
    for (int i = 0; i < 9; ++i) {
        way << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    // What is disabled for want of a picture is passed over.
    QCOMPARE(way.mid(0, 7).join(QLatin1Char(' ')),
             QStringLiteral("questionTitleEdit questionDescriptionEdit questionPictures "
                            "questionAddPicture questionPastePicture questionSubmit "
                            "questionClose"));
    part<QPlainTextEdit>("questionDescriptionEdit")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(value("SELECT title FROM questions"), QStringLiteral("drill"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(m_window->isHidden());
}

void RaiseWindowTest::everyPartHasANameForScreenReaders()
{
    const auto parts = m_window->findChildren<QWidget *>(QRegularExpression(
        QStringLiteral("^question(TitleEdit|DescriptionEdit|Pictures|AddPicture|PastePicture|"
                       "RemovePicture|Submit|Close|Target)$")));
    QCOMPARE(parts.size(), 9);
    for (QWidget *widget : parts) {
        const auto *face = QAccessible::queryAccessibleInterface(widget);
        QVERIFY2(face && !face->text(QAccessible::Name).isEmpty(),
                 qPrintable(widget->objectName()));
    }
}

void RaiseWindowTest::aQuestionNeedsATitle()
{
    write(QStringLiteral("  "), QStringLiteral("kept"));
    click("questionSubmit");
    QCOMPARE(message(), QStringLiteral("请填写标题"));
    QCOMPARE(m_home->stock(), m_empty);
    QCOMPARE(part<QPlainTextEdit>("questionDescriptionEdit")->toPlainText(),
             QStringLiteral("kept"));
}

void RaiseWindowTest::aTitleEndsAtItsLongest()
{
    const QString longest(QuestionChanges::LongestTitle, QLatin1Char('x'));
    write(longest + QLatin1Char('y'));
    click("questionSubmit");
    QCOMPARE(value("SELECT title FROM questions"), longest);
}

/// Assigned to somebody else while the window stood open.
void RaiseWindowTest::aJobThatWentElsewhere()
{
    drop({m_home->file(QStringLiteral("one.png"))});
    write(QStringLiteral("t"));
    m_home->house.database().run(QStringLiteral("DELETE FROM orig_file_assign"));
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    click("questionSubmit");
    QCOMPARE(message(), QStringLiteral("该料号不在您的范围内"));
    QCOMPARE(notices.size(), 1);
    QCOMPARE(m_home->stock(), m_empty);
    QCOMPARE(pictures(), 1);
    QCOMPARE(value("SELECT count(*) FROM events WHERE refused = 1 AND action = 'question.raise'"),
             QStringLiteral("1"));
}

void RaiseWindowTest::aJobThatIsGone()
{
    expect("no such flow");
    turnTo(4711);
    QCOMPARE(message(), QStringLiteral("找不到该料号的流程"));
    QVERIFY(!part<QPushButton>("questionSubmit")->isEnabled());
    QVERIFY(!part<QLineEdit>("questionTitleEdit")->isEnabled());
    QCOMPARE(m_window->m_id, 0);
    turnTo(m_home->other.flowId);
    QVERIFY(part<QPushButton>("questionSubmit")->isEnabled());
    QCOMPARE(message(), QString());
}

void RaiseWindowTest::anotherJobAsksFirst()
{
    BoxAnswers boxes;
    write(QString(), QStringLiteral("something"));
    boxes.answer(QMessageBox::No);
    turnTo(m_home->other.flowId);
    QCOMPARE(boxes.texts, QStringList(QStringLiteral("为 %1 填写的问题尚未保存，放弃并转到 %2？")
                                          .arg(m_home->job.jobName, m_home->other.jobName)));
    QCOMPARE(m_window->m_id, m_home->job.flowId);
    QVERIFY(target().contains(m_home->job.jobName));
    write(QStringLiteral("t"));
    click("questionSubmit");
    QCOMPARE(value("SELECT flow_id FROM questions").toInt(), m_home->job.flowId);

    drop({m_home->file(QStringLiteral("one.png"))}); // a picture alone counts too
    boxes.answer(QMessageBox::Yes);
    turnTo(m_home->other.flowId);
    QCOMPARE(boxes.texts.size(), 2);
    QVERIFY(target().contains(m_home->other.jobName));
    QCOMPARE(pictures(), 0);
}

void RaiseWindowTest::theSameJobKeepsWhatIsWritten()
{
    BoxAnswers boxes;
    write(QStringLiteral("t"));
    m_window->close();
    turnTo(m_home->job.flowId);
    QVERIFY(boxes.texts.isEmpty());
    QVERIFY(m_window->isVisible());
    QCOMPARE(part<QLineEdit>("questionTitleEdit")->text(), QStringLiteral("t"));
}

void RaiseWindowTest::anEmptyWindowMovesWithoutAsking()
{
    BoxAnswers boxes;
    write(QStringLiteral(" "), QStringLiteral("\n"));
    turnTo(m_home->other.flowId);
    QVERIFY(boxes.texts.isEmpty());
    QVERIFY(target().contains(m_home->other.jobName));
    QVERIFY(part<QLineEdit>("questionTitleEdit")->text().isEmpty());
}

void RaiseWindowTest::aRefusedJobDoesNotDropWhatIsWritten()
{
    BoxAnswers boxes;
    write(QStringLiteral("t"));
    expect("no such flow");
    turnTo(4711);
    QVERIFY(boxes.texts.isEmpty());
    QCOMPARE(message(), QStringLiteral("找不到该料号的流程"));
    QCOMPARE(m_window->m_id, m_home->job.flowId);
    QCOMPARE(part<QLineEdit>("questionTitleEdit")->text(), QStringLiteral("t"));
    click("questionSubmit");
    QCOMPARE(value("SELECT flow_id FROM questions").toInt(), m_home->job.flowId);
}

void RaiseWindowTest::turningDuringAQuestionIsRefused()
{
    BoxAnswers boxes;
    write(QStringLiteral("t"));
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    boxes.meanwhile([this] {
        turnTo(m_home->other.flowId);
        QCOMPARE(m_window->m_id, m_home->job.flowId);
    });
    boxes.answer(QMessageBox::No);
    turnTo(m_home->other.flowId);
    QCOMPARE(boxes.texts.size(), 1);
    QCOMPARE(notices.size(), 1);
    QCOMPARE(message(), QStringLiteral("正在处理，完成前不能转到其他料号或问题"));
}

void RaiseWindowTest::closingDuringAQuestionIsRefused()
{
    BoxAnswers boxes;
    write(QStringLiteral("t"));
    boxes.meanwhile([this] {
        QVERIFY(!m_window->close());
        QVERIFY(!part<QPushButton>("questionSubmit")->isEnabled());
    });
    boxes.answer(QMessageBox::No);
    turnTo(m_home->other.flowId);
    QCOMPARE(boxes.texts.size(), 1);
    QVERIFY(part<QPushButton>("questionSubmit")->isEnabled());
    QVERIFY(m_window->close());
}

void RaiseWindowTest::anOpenWindowComesToTheFront()
{
    QWidget front;
    front.show();
    front.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&front));
    turnTo(m_home->job.flowId);
    QVERIFY(QTest::qWaitForWindowActive(m_window));
}

void RaiseWindowTest::signingOutClosesAndDeletes()
{
    write(QStringLiteral("t"));
    m_home->house.signOut();
    QVERIFY(m_window->isHidden());
    QTRY_VERIFY(m_window.isNull());
    QCOMPARE(m_home->stock(), m_empty);
}

void RaiseWindowTest::deletedDuringAQuestion()
{
    BoxAnswers boxes;
    write(QStringLiteral("t"));
    boxes.meanwhile([this] { delete m_window; });
    QTimer::singleShot(0, m_window, [this] { turnTo(m_home->other.flowId); });
    QTRY_VERIFY(m_window.isNull());
    QCOMPARE(boxes.texts.size(), 1);
}

void RaiseWindowTest::raisesNoRefresh()
{
    const QSignalSpy flows(DMS_UICommon::interface(), &DMS_UICommon::refreshExportJobTable);
    drop({m_home->file(QStringLiteral("one.png"))});
    write(QStringLiteral("t"));
    click("questionSubmit");
    QCoreApplication::processEvents();
    QCOMPARE(flows.size(), 0);
}

KODMS_TEST_MAIN(RaiseWindowTest, QApplication)
#include "RaiseWindowTest.moc"
