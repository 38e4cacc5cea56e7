// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/ui/DMS_JobCheck_Widget.h"
#include "services/api/SignIn.h"
#include "tests/e2e/ExportUser.h"
#include "tests/e2e/SampleHouse.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTextEdit>

#include <memory>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using KODMS::UI::DMS_JobCheck_Widget;

/// A question from its raising to its end, by clicks and keys at the job-flow desk on the
/// real services.
class QuestionsLifeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void aQuestionIsRaisedAnsweredAndResolved();
    void theNextUserFindsNoWindowOfTheLast();

private:
    const RecordProbe &records() const { return m_house->records(); }

    /// The desk's question window that shows this title now.
    static DMS_JobCheck_Widget *window(const ExportUser &user, const char *title);

    std::unique_ptr<SampleHouse> m_house;
};

namespace {

template <typename Part> Part *part(const QWidget *window, const char *name)
{
    return window->findChild<Part *>(QLatin1String(name));
}

QTableWidget *questions(const ExportUser &user)
{
    return user.control<QTableWidget>("m_pQuestionTableWidget");
}

void clickQuestion(const ExportUser &user, int row)
{
    auto *table = questions(user);
    table->scrollToItem(table->item(row, 1));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                      table->visualItemRect(table->item(row, 1)).center());
}

} // namespace

void QuestionsLifeTest::initTestCase()
{
    m_house = std::make_unique<SampleHouse>(60);
}

void QuestionsLifeTest::cleanupTestCase()
{
    m_house.reset();
}

DMS_JobCheck_Widget *QuestionsLifeTest::window(const ExportUser &user, const char *title)
{
    const auto windows =
        user.desk<KODMS::UI::DMS_Export_Widget>()->findChildren<DMS_JobCheck_Widget *>();
    for (auto *window : windows)
        if (window->isVisible() && window->windowTitle() == QString::fromUtf8(title))
            return window;
    return nullptr;
}

void QuestionsLifeTest::aQuestionIsRaisedAnsweredAndResolved()
{
    const int admin = m_house->signIn(QStringLiteral("admin"));
    ExportUser user;
    user.clickCell(0, ExportUser::JobName);
    const int before = questions(user)->rowCount();

    user.click("m_pCreateQuestionPB");
    auto *raise = window(user, "创建问题");
    QVERIFY(raise);
    const QString job = user.column(ExportUser::JobName).first();
    QVERIFY(part<QLabel>(raise, "questionTarget")->text().contains(job));
    QTest::keyClicks(part<QLineEdit>(raise, "questionTitleEdit"), QStringLiteral("drill size"));
    auto *description = part<QPlainTextEdit>(raise, "questionDescriptionEdit");
    QTest::keyClicks(description, QStringLiteral("layer 3"));
    QImage screenshot(64, 48, QImage::Format_RGB32);
    screenshot.fill(Qt::blue);
    QApplication::clipboard()->setImage(screenshot);
    QTest::keySequence(description, QKeySequence::Paste);
    QCOMPARE(part<QListWidget>(raise, "questionPictures")->count(), 1);
    QTest::mouseClick(part<QPushButton>(raise, "questionSubmit"), Qt::LeftButton);
    const int id = records().number(QStringLiteral("SELECT MAX(id) FROM questions"));
    QCOMPARE(
        records().text(
            QStringLiteral("SELECT q.title || '/' || q.description || '/' || q.check_flag || "
                           "'/' || f.job_name || '/' || q.create_user_id || '/' || (SELECT "
                           "count(*) FROM question_pictures p WHERE p.question_id = q.id) FROM "
                           "questions q JOIN job_flows f ON f.id = q.flow_id WHERE q.id = %1")
                .arg(id)),
        QStringLiteral("drill size/layer 3/0/%1/%2/1").arg(job).arg(admin));
    QTest::keyClick(raise, Qt::Key_Escape);
    QVERIFY(!raise->isVisible());
    QCOMPARE(questions(user)->rowCount(), before); // the desk waits for a click

    user.clickCell(0, ExportUser::JobName);
    QCOMPARE(questions(user)->rowCount(), before + 1);
    const int row = before; // the newest is the last
    QCOMPARE(questions(user)->item(row, 1)->text(), QStringLiteral("drill size"));
    QCOMPARE(questions(user)->item(row, 3)->text(), QStringLiteral("未审核"));

    clickQuestion(user, row);
    user.click("m_pViewQuestionPB");
    auto *view = window(user, "查看问题");
    QVERIFY(view);
    QCOMPARE(part<QLabel>(view, "questionTitle")->text(), QStringLiteral("drill size"));
    QCOMPARE(part<QListWidget>(view, "questionPictures")->count(), 1);
    QApplication::setActiveWindow(view); // whose shortcut is meant
    auto *answer = part<QPlainTextEdit>(view, "questionAnswerEdit");
    QTest::keyClicks(answer, QStringLiteral("0.25 mm"));
    QTest::keyClick(part<QComboBox>(view, "questionStateChoice"), Qt::Key_Down);
    QTest::keyClick(answer, Qt::Key_Return, Qt::ControlModifier);
    QVERIFY(part<QTextEdit>(view, "questionHistory")
                ->toPlainText()
                .contains(QStringLiteral("0.25 mm")));
    QCOMPARE(
        records().text(
            QStringLiteral("SELECT answer || check_flag FROM questions WHERE id = %1").arg(id)),
        QStringLiteral("0.25 mm1"));
    QTest::keyClick(view, Qt::Key_Escape);

    user.clickCell(0, ExportUser::JobName);
    QCOMPARE(questions(user)->item(row, 3)->text(), QStringLiteral("审核未通过"));
    clickQuestion(user, row);
    user.click("m_pResolveQuestionPB");
    QCOMPARE(questions(user)->item(row, 3)->text(), QStringLiteral("审核通过"));
    QCOMPARE(questions(user)->item(row, 3)->foreground(), QBrush(QColor(Qt::darkGreen)));
    QCOMPARE(records().texts(
                 QStringLiteral("SELECT action FROM events WHERE record_kind = 'question' AND "
                                "record_id = %1 AND user_id = %2 ORDER BY id")
                     .arg(id)
                     .arg(admin)),
             QStringList({QStringLiteral("question.raise"), QStringLiteral("question.answer"),
                          QStringLiteral("question.UpdateQuestionStatus"),
                          QStringLiteral("question.UpdateQuestionStatus")}));
}

void QuestionsLifeTest::theNextUserFindsNoWindowOfTheLast()
{
    m_house->signIn(QStringLiteral("admin"));
    ExportUser user;
    user.clickCell(0, ExportUser::JobName);
    user.click("m_pCreateQuestionPB");
    auto *raise = window(user, "创建问题");
    QVERIFY(raise);
    QTest::keyClicks(part<QLineEdit>(raise, "questionTitleEdit"), QStringLiteral("not mine"));
    SignIn::signOut();
    QVERIFY(!window(user, "创建问题"));
    m_house->signIn(QStringLiteral("admin"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    user.click("m_pCreateQuestionPB");
    raise = window(user, "创建问题");
    QVERIFY(raise);
    QVERIFY(part<QLineEdit>(raise, "questionTitleEdit")->text().isEmpty());
}

KODMS_TEST_MAIN(QuestionsLifeTest, QApplication)
#include "QuestionsLifeTest.moc"
