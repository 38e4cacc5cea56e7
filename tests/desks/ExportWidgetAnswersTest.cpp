// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/BoxStory.h"
#include "tests/desks/DeskTest.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QPushButton>

using namespace KODMS::Tests;
using KODMS::DataLib::Model::Odbpp_Questions;

/// Resolving questions, and listing them without a click.
class ExportWidgetAnswersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init();

    void cleanup() { m_desk.reset(); }

    void withoutACurrentQuestionTheUserIsAskedToSelect();
    void aQuestionIsResolvedAndTheListRenewed();
    void theListIsThatOfTheJobThatIsCurrentNow();
    void withoutACurrentJobTheUserIsAskedToSelectOne();
    void nobodyLooksAtTheResult();
    void aCheckListsQuestionsWithoutStatus();
    void aCheckReplacesTheList();
    void aCheckNeedsACurrentJob();
    void aClickAfterACheckShowsTheStatus();

private:
    void resolve() const { control<QPushButton>(*m_desk, "m_pResolveQuestionPB")->click(); }

    void check() const { QMetaObject::invokeMethod(m_desk.get(), "on_m_pCheckJobPB_clicked"); }

    void click(int jobRow) const;

    std::unique_ptr<KODMS::UI::DMS_Export_Widget> m_desk;
};

namespace {

Odbpp_Questions question(int id, int flag)
{
    Odbpp_Questions question;
    question.id = id;
    question.title = "title" + std::to_string(id);
    question.description = "about" + std::to_string(id);
    question.checkFlag = flag;
    return question;
}

} // namespace

void ExportWidgetAnswersTest::init()
{
    FakeServices::instance().reset();
    FakeServices::instance().setUser(42);
    FakeServices::instance().questions.always({{question(11, 0), question(12, 1)}});
    answerWithFlows(3);
    m_desk = makeDesk({Right::CheckAuthority});
}

void ExportWidgetAnswersTest::click(int jobRow) const
{
    auto *table = jobTable(*m_desk);
    table->setCurrentCell(jobRow, 1);
    QMetaObject::invokeMethod(m_desk.get(), "on_m_pJobTableWidget_ItemClicked",
                              Q_ARG(QTableWidgetItem *, table->item(jobRow, 1)));
    FakeServices::instance().forgetCalls();
}

void ExportWidgetAnswersTest::withoutACurrentQuestionTheUserIsAskedToSelect()
{
    click(0);
    QCOMPARE(questionTable(*m_desk)->currentRow(), -1);
    const BoxStory boxes;
    resolve();
    QCOMPARE(BoxStory::text(), QStringLiteral("box(\"请选择一个问题项\")"));
    const auto &box = boxes.probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), static_cast<QWidget *>(m_desk.get()));
}

void ExportWidgetAnswersTest::aQuestionIsResolvedAndTheListRenewed()
{
    click(1);
    questionTable(*m_desk)->setCurrentCell(1, 1);
    FakeServices::instance().questions.always({{question(11, 0), question(12, 2)}});
    const BoxStory boxes;
    resolve();
    QCOMPARE(BoxStory::text(),
             QStringLiteral("Odbpp_QuestionsBll::UpdateQuestionStatus(12, 2, 42)\n"
                            "Odbpp_QuestionsBll::select({}, {JobId: 2})"));
    QCOMPARE(columnTexts(questionTable(*m_desk), 3),
             QStringList({QStringLiteral("未审核"), QStringLiteral("审核通过")}));
    QCOMPARE(questionTable(*m_desk)->item(1, 3)->foreground(), QBrush(QColor(Qt::darkGreen)));
}

void ExportWidgetAnswersTest::theListIsThatOfTheJobThatIsCurrentNow()
{
    click(0);
    questionTable(*m_desk)->setCurrentCell(0, 1);
    jobTable(*m_desk)->setCurrentCell(2, 1); // by the keyboard: no click
    FakeServices::instance().forgetCalls();
    const BoxStory boxes;
    resolve();
    QCOMPARE(BoxStory::text(),
             QStringLiteral("Odbpp_QuestionsBll::UpdateQuestionStatus(11, 2, 42)\n"
                            "Odbpp_QuestionsBll::select({}, {JobId: 3})"));
}

void ExportWidgetAnswersTest::withoutACurrentJobTheUserIsAskedToSelectOne()
{
    click(0);
    questionTable(*m_desk)->setCurrentCell(0, 1);
    control<QPushButton>(*m_desk, "m_pRefreshPB")->click();
    FakeServices::instance().forgetCalls();
    const BoxStory boxes;
    resolve();
    QCOMPARE(BoxStory::text(),
             QStringLiteral("Odbpp_QuestionsBll::UpdateQuestionStatus(11, 2, 42)\n"
                            "box(\"请选择一个料号\")"));
    QCOMPARE(questionTable(*m_desk)->rowCount(), 2);
}

void ExportWidgetAnswersTest::nobodyLooksAtTheResult()
{
    click(0);
    questionTable(*m_desk)->setCurrentCell(0, 1);
    FakeServices::instance().result("Odbpp_QuestionsBll::UpdateQuestionStatus").always(0);
    const BoxStory boxes;
    resolve();
    QCOMPARE(FakeServices::instance().count("Odbpp_QuestionsBll::select"), 1);
    QCOMPARE(boxes.probe.count(), 0);
}

void ExportWidgetAnswersTest::aCheckListsQuestionsWithoutStatus()
{
    jobTable(*m_desk)->setCurrentCell(1, 1);
    FakeServices::instance().forgetCalls();
    const BoxStory boxes;
    check();
    QCOMPARE(BoxStory::text(), QStringLiteral("Odbpp_QuestionsBll::select({}, {JobId: 2})"));
    const auto *table = questionTable(*m_desk);
    QCOMPARE(columnTexts(table, 0), QStringList({QStringLiteral("11"), QStringLiteral("12")}));
    QCOMPARE(columnTexts(table, 1),
             QStringList({QStringLiteral("title11"), QStringLiteral("title12")}));
    QCOMPARE(columnTexts(table, 2),
             QStringList({QStringLiteral("about11"), QStringLiteral("about12")}));
    QVERIFY(!table->item(0, 3));
    QVERIFY(!table->item(1, 3));
}

void ExportWidgetAnswersTest::aCheckReplacesTheList()
{
    click(0);
    jobTable(*m_desk)->setCurrentCell(1, 1);
    FakeServices::instance().questions.always({{question(13, 3)}});
    check();
    QCOMPARE(columnTexts(questionTable(*m_desk), 0), QStringList(QStringLiteral("13")));
    FakeServices::instance().questions.always({{}, false});
    check();
    QCOMPARE(questionTable(*m_desk)->rowCount(), 0);
}

void ExportWidgetAnswersTest::aCheckNeedsACurrentJob()
{
    click(0);
    control<QPushButton>(*m_desk, "m_pRefreshPB")->click();
    FakeServices::instance().forgetCalls();
    const BoxStory boxes;
    check();
    QCOMPARE(BoxStory::text(), QStringLiteral("box(\"请选择一个料号\")"));
    QCOMPARE(questionTable(*m_desk)->rowCount(), 2);
}

void ExportWidgetAnswersTest::aClickAfterACheckShowsTheStatus()
{
    jobTable(*m_desk)->setCurrentCell(0, 1);
    check();
    click(0);
    QCOMPARE(columnTexts(questionTable(*m_desk), 3),
             QStringList({QStringLiteral("未审核"), QStringLiteral("审核未通过")}));
}

KODMS_TEST_MAIN(ExportWidgetAnswersTest, QApplication)
#include "ExportWidgetAnswersTest.moc"
