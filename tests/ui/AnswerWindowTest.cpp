// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_QuestionsBll.h"
#include "foundation/status/FlowStatus.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/ui/questions/QuestionState.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"
#include "tests/ui/BoxAnswers.h"
#include "tests/ui/QuestionWindowCase.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QTimer>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using KODMS::UI::DMS_JobCheck_Widget;
using KODMS::UI::DMS_UICommon;

/// The window in which a question is read and answered, on running services.
class AnswerWindowTest : public QuestionWindowCase {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void showsTheQuestion();
    void everyStateHasTheDesksWordAndColour_data();
    void everyStateHasTheDesksWordAndColour();
    void answersByClicks();
    void answersByKeys();
    void everyPartHasANameForScreenReaders();
    void aStateAloneIsSubmitted();
    void nothingIsNotSubmitted();
    void picturesAreShown();
    void aPictureThatIsMissingIsSaid();
    void aPictureIsSeenInFull();
    void whoeverWasOvertakenSeesTheNewsAndKeepsTheAnswer();
    void anAnswerThatFailsIsKept();
    void aQuestionOfAJobThatWentElsewhere();
    void aQuestionThatIsGone();
    void anotherQuestionAsksFirst();
    void theSameQuestionIsReadAnew();
    void aRefusedQuestionDoesNotDropTheAnswer();
    void signingOutClosesAndDeletes();
    void deletedDuringAQuestion();

private:
    void view(int questionId) const;

    void write(const QString &answer) const
    {
        part<QPlainTextEdit>("questionAnswerEdit")->setPlainText(answer);
    }

    QString answer() const { return part<QPlainTextEdit>("questionAnswerEdit")->toPlainText(); }

    QString title() const { return label("questionTitle"); }

    QString state() const { return label("questionState"); }

    /// The history without its times.
    QString history() const
    {
        static const QRegularExpression time(QStringLiteral("\\d{4}-\\d\\d-\\d\\d [0-9:]{8}　"));
        return part<QTextEdit>("questionHistory")->toPlainText().remove(time);
    }

    void choose(int flag) const { part<QComboBox>("questionStateChoice")->setCurrentIndex(flag); }

    /// Somebody else of the same installation, past this session.
    void othersSetState(int id, int flag)
    {
        const int admin = m_home->house
                              .value(QStringLiteral("SELECT id FROM users WHERE login_name "
                                                    "= 'admin'"))
                              .toInt();
        auto &database = m_home->house.database();
        database.run(
            QStringLiteral("UPDATE questions SET check_flag = %1 WHERE id = %2").arg(flag).arg(id));
        database.run(
            QStringLiteral("INSERT INTO events (create_time, user_id, action, record_kind, "
                           "record_id, before_value, after_value) VALUES "
                           "('2026-11-21T00:00:00.000Z', %1, 'question.UpdateQuestionStatus', "
                           "'question', %2, '0', '%3')")
                .arg(admin)
                .arg(id)
                .arg(flag));
    }

    int m_question = 0;
};

void AnswerWindowTest::init()
{
    m_home = std::make_unique<QuestionHome>();
    m_question = m_home->raise(QStringLiteral("孔径"));
    m_window = new DMS_JobCheck_Widget(m_question, true, nullptr);
    view(m_question);
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void AnswerWindowTest::cleanup()
{
    delete m_window;
    m_home.reset();
}

/// As the desk does.
void AnswerWindowTest::view(int questionId) const
{
    const QPointer<DMS_JobCheck_Widget> window = m_window;
    window->m_id = questionId;
    window->getQuestionData();
    if (window)
        window->show();
}

void AnswerWindowTest::showsTheQuestion()
{
    QVERIFY(m_window->isWindow());
    QCOMPARE(m_window->windowTitle(), QStringLiteral("查看问题"));
    QCOMPARE(part<QLabel>("questionTarget")->text(),
             QStringLiteral("料号：") + m_home->job.jobName);
    QCOMPARE(title(), QStringLiteral("孔径"));
    QCOMPARE(state(), QStringLiteral("未审核"));
    QCOMPARE(history(), QStringLiteral("EXECUTOR　提出\nabout 孔径"));
    QVERIFY(part<QListWidget>("questionPictures")->isHidden());
    QCOMPARE(message(), QString());
}

void AnswerWindowTest::everyStateHasTheDesksWordAndColour_data()
{
    QTest::addColumn<int>("flag");
    for (int flag = 0; flag < 4; ++flag)
        QTest::newRow(qPrintable(QString::number(flag))) << flag;
}

void AnswerWindowTest::everyStateHasTheDesksWordAndColour()
{
    QFETCH(int, flag);
    const auto desks = KODMS::UI::questionCheckText(flag);
    QCOMPARE(questionState(flag).text, desks.text);
    QVERIFY(questionState(flag).colour == desks.colour);
    othersSetState(m_question, flag);
    view(m_question);
    QCOMPARE(state(), desks.text);
    const QColor shown = part<QLabel>("questionState")->palette().color(QPalette::WindowText);
    QCOMPARE(shown, desks.colour ? QColor(*desks.colour) : QColor(0x1e, 0x1e, 0x1e));
    const auto *choice = part<QComboBox>("questionStateChoice");
    QCOMPARE(choice->count(), 4);
    QCOMPARE(choice->currentIndex(), flag);
    QCOMPARE(choice->itemText(flag), desks.text);
    const QVariant ink = choice->itemData(flag, Qt::ForegroundRole);
    QCOMPARE(ink.isValid(), desks.colour.has_value());
    if (desks.colour)
        QCOMPARE(ink.value<QColor>(), QColor(*desks.colour));
    QVERIFY(history().endsWith(QStringLiteral("管理员　状态改为 ") + desks.text));
    const QTextBlock last = part<QTextEdit>("questionHistory")->document()->lastBlock();
    QTextCursor end(last);
    end.movePosition(QTextCursor::End);
    QCOMPARE(end.charFormat().foreground().color(),
             desks.colour ? QColor(*desks.colour) : QColor(0x1e, 0x1e, 0x1e));
    QCOMPARE(questionState(9).text, KODMS::UI::questionCheckText(9).text);
}

void AnswerWindowTest::answersByClicks()
{
    write(QStringLiteral("已补偿"));
    choose(1);
    click("questionSubmit");
    QCOMPARE(value("SELECT answer || '/' || check_flag || '/' || update_user_id FROM questions"),
             QStringLiteral("已补偿/1/%1").arg(m_home->user));
    QCOMPARE(message(), QStringLiteral("已提交"));
    QCOMPARE(state(), QStringLiteral("审核未通过"));
    QCOMPARE(answer(), QString());
    QCOMPARE(history(), QStringLiteral("EXECUTOR　提出\nabout 孔径\n\nEXECUTOR　回复\n已补偿\n\n"
                                       "EXECUTOR　状态改为 审核未通过"));
    click("questionClose");
    QVERIFY(m_window->isHidden());
}

void AnswerWindowTest::answersByKeys()
{
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    part<QPlainTextEdit>("questionAnswerEdit")->setFocus();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("done"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), part<QComboBox>("questionStateChoice"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), part<QPushButton>("questionSubmit"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QCOMPARE(value("SELECT answer || check_flag FROM questions"), QStringLiteral("done2"));
    part<QPlainTextEdit>("questionAnswerEdit")->setFocus();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("again"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(value("SELECT answer FROM questions"), QStringLiteral("again"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(m_window->isHidden());
}

void AnswerWindowTest::everyPartHasANameForScreenReaders()
{
    const auto parts = m_window->findChildren<QWidget *>(QRegularExpression(
        QStringLiteral("^question(AnswerEdit|StateChoice|State|History|Pictures|Submit|Close|Title|"
                       "Target)$")));
    QCOMPARE(parts.size(), 9);
    for (QWidget *widget : parts) {
        const auto *face = QAccessible::queryAccessibleInterface(widget);
        QVERIFY2(face && !face->text(QAccessible::Name).isEmpty(),
                 qPrintable(widget->objectName()));
    }
}

void AnswerWindowTest::aStateAloneIsSubmitted()
{
    choose(3);
    click("questionSubmit");
    QCOMPARE(value("SELECT answer || check_flag FROM questions"), QStringLiteral("3"));
    QCOMPARE(state(), QStringLiteral("完成"));
}

void AnswerWindowTest::nothingIsNotSubmitted()
{
    expect("question\\.answer");
    click("questionSubmit");
    QCOMPARE(message(), QStringLiteral("请填写回复或更改状态"));
    QCOMPARE(value("SELECT count(*) FROM events WHERE action = 'question.answer'"),
             QStringLiteral("0"));
}

void AnswerWindowTest::picturesAreShown()
{
    view(m_home->raise(QStringLiteral("t"), 2));
    const auto *strip = part<QListWidget>("questionPictures");
    QVERIFY(strip->isVisible());
    QCOMPARE(strip->count(), 2);
    QCOMPARE(strip->item(1)->text(), QStringLiteral("p1.png"));
    QVERIFY(!strip->item(1)->icon().isNull());
    QCOMPARE(message(), QString());
    QVERIFY(TestInstallation::entries(m_home->house.staging()).isEmpty());
}

void AnswerWindowTest::aPictureThatIsMissingIsSaid()
{
    const int id = m_home->raise(QStringLiteral("t"), 2);
    QVERIFY(m_home->house.store().remove(
        value("SELECT MIN(stored_name) FROM question_pictures WHERE file_name = 'p0.png'")));
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    expect("question\\.answer");
    view(id);
    QCOMPARE(part<QListWidget>("questionPictures")->count(), 2);
    QVERIFY2(message().startsWith(QStringLiteral("图片 p0.png：")), qPrintable(message()));
    QCOMPARE(notices.size(), 1);
    write(QStringLiteral("x")); // it can be answered all the same
    expect("question\\.answer");
    click("questionSubmit");
    QCOMPARE(value("SELECT answer FROM questions WHERE title = 't'"), QStringLiteral("x"));
}

void AnswerWindowTest::aPictureIsSeenInFull()
{
    view(m_home->raise(QStringLiteral("t"), 1));
    auto *strip = part<QListWidget>("questionPictures");
    strip->setCurrentRow(0);
    QTest::keyClick(strip, Qt::Key_Return);
    const auto *shown = m_window->findChild<QWidget *>(QStringLiteral("questionPicture"));
    QVERIFY(shown && shown->isVisible());
    QCOMPARE(shown->findChild<QLabel *>()->pixmap(Qt::ReturnByValue).size(), QSize(40, 30));
    QTest::keyClick(strip, Qt::Key_Delete); // nothing is taken out of a question
    QCOMPARE(strip->count(), 1);
}

void AnswerWindowTest::whoeverWasOvertakenSeesTheNewsAndKeepsTheAnswer()
{
    write(QStringLiteral("mine"));
    othersSetState(m_question, 1);
    click("questionSubmit");
    QVERIFY2(message().startsWith(QStringLiteral("管理员 于 ")), qPrintable(message()));
    QCOMPARE(answer(), QStringLiteral("mine"));
    QCOMPARE(state(), QStringLiteral("审核未通过"));
    QCOMPARE(part<QComboBox>("questionStateChoice")->currentIndex(), 1); // none was chosen
    QVERIFY(history().contains(QStringLiteral("状态改为 审核未通过")));
    QCOMPARE(value("SELECT answer || check_flag FROM questions"), QStringLiteral("1"));
    choose(2);
    othersSetState(m_question, 3);
    click("questionSubmit");
    QCOMPARE(part<QComboBox>("questionStateChoice")->currentIndex(), 2); // one was
    click("questionSubmit");
    QCOMPARE(value("SELECT answer || check_flag FROM questions"), QStringLiteral("mine2"));
}

void AnswerWindowTest::anAnswerThatFailsIsKept()
{
    const PlainConnection others(m_home->house.place().settings());
    const QString change = QStringLiteral("UPDATE OF check_flag ON questions");
    others.refuse(change, QStringLiteral("disk"));
    write(QStringLiteral("x"));
    choose(2);
    expect("question\\.answer");
    click("questionSubmit");
    QVERIFY(!message().isEmpty());
    QCOMPARE(answer(), QStringLiteral("x"));
    QCOMPARE(value("SELECT answer || check_flag FROM questions"), QStringLiteral("0"));
    others.allow(change);
    click("questionSubmit");
    QCOMPARE(value("SELECT answer || check_flag FROM questions"), QStringLiteral("x2"));
}

void AnswerWindowTest::aQuestionOfAJobThatWentElsewhere()
{
    write(QStringLiteral("x"));
    m_home->house.database().run(QStringLiteral("DELETE FROM orig_file_assign"));
    click("questionSubmit");
    QCOMPARE(message(), QStringLiteral("该料号不在您的范围内"));
    QCOMPARE(answer(), QStringLiteral("x"));
    QCOMPARE(value("SELECT answer || check_flag FROM questions"), QStringLiteral("0"));
    write(QString());
    view(m_question);
    QCOMPARE(message(), QStringLiteral("该料号不在您的范围内"));
    QCOMPARE(title(), QString()); // nothing of it is shown any more
    QCOMPARE(history(), QString());
    QVERIFY(!part<QPushButton>("questionSubmit")->isEnabled());
}

void AnswerWindowTest::aQuestionThatIsGone()
{
    expect("no such question");
    view(4711);
    QCOMPARE(message(), QStringLiteral("该问题已不存在"));
    QCOMPARE(state(), QString());
    QVERIFY(!part<QPlainTextEdit>("questionAnswerEdit")->isEnabled());
    QVERIFY(!part<QPushButton>("questionSubmit")->isEnabled());
    view(m_question);
    QCOMPARE(title(), QStringLiteral("孔径"));
    QCOMPARE(message(), QString());
    QVERIFY(part<QPushButton>("questionSubmit")->isEnabled());
}

void AnswerWindowTest::anotherQuestionAsksFirst()
{
    const int other = m_home->raise(QStringLiteral("other"));
    BoxAnswers boxes;
    choose(2); // a chosen state counts too
    boxes.answer(QMessageBox::No);
    view(other);
    QCOMPARE(boxes.texts,
             QStringList(QStringLiteral("对“孔径”的回复尚未提交，放弃并转到“other”？")));
    QCOMPARE(title(), QStringLiteral("孔径"));
    QCOMPARE(m_window->m_id, m_question);
    choose(0);
    write(QStringLiteral("x"));
    boxes.answer(QMessageBox::Yes);
    view(other);
    QCOMPARE(boxes.texts.size(), 2);
    QCOMPARE(title(), QStringLiteral("other"));
    QCOMPARE(answer(), QString());
    write(QStringLiteral("y"));
    click("questionSubmit");
    QCOMPARE(value("SELECT answer FROM questions WHERE title = 'other'"), QStringLiteral("y"));
    QCOMPARE(value("SELECT answer FROM questions WHERE title = '孔径'"), QString());
    view(m_question); // nothing written: nothing asked
    QCOMPARE(boxes.texts.size(), 2);
    QCOMPARE(title(), QStringLiteral("孔径"));
}

void AnswerWindowTest::theSameQuestionIsReadAnew()
{
    write(QStringLiteral("x"));
    othersSetState(m_question, 3);
    BoxAnswers boxes;
    view(m_question);
    QVERIFY(boxes.texts.isEmpty());
    QCOMPARE(state(), QStringLiteral("完成"));
    QCOMPARE(answer(), QStringLiteral("x"));
    click("questionSubmit");
    QCOMPARE(value("SELECT answer || check_flag FROM questions"), QStringLiteral("x3"));
}

void AnswerWindowTest::aRefusedQuestionDoesNotDropTheAnswer()
{
    write(QStringLiteral("x"));
    expect("no such question");
    view(4711);
    QCOMPARE(message(), QStringLiteral("该问题已不存在"));
    QCOMPARE(answer(), QStringLiteral("x"));
    QCOMPARE(m_window->m_id, m_question);
    click("questionSubmit");
    QCOMPARE(value("SELECT answer FROM questions"), QStringLiteral("x"));
}

void AnswerWindowTest::signingOutClosesAndDeletes()
{
    write(QStringLiteral("x"));
    m_home->house.signOut();
    QVERIFY(m_window->isHidden());
    QTRY_VERIFY(m_window.isNull());
}

void AnswerWindowTest::deletedDuringAQuestion()
{
    const int other = m_home->raise(QStringLiteral("other"));
    BoxAnswers boxes;
    write(QStringLiteral("x"));
    boxes.meanwhile([this] { delete m_window; });
    QTimer::singleShot(0, m_window, [this, other] { view(other); });
    QTRY_VERIFY(m_window.isNull());
    QCOMPARE(boxes.texts.size(), 1);
}

KODMS_TEST_MAIN(AnswerWindowTest, QApplication)
#include "AnswerWindowTest.moc"
