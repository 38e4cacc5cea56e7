// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/DeskTest.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QHeaderView>

using namespace KODMS::Tests;
using KODMS::DataLib::Model::Odbpp_Questions;
using KODMS::UI::DMS_Export_Widget;

/// The questions of the clicked job.
class ExportWidgetQuestionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        FakeServices::instance().reset();
        FakeServices::instance().setUser(42);
        answerWithFlows(3);
    }

    void theQuestionTableIsSetUp();
    void aClickAsksForTheQuestionsOfTheRow();
    void theCurrentRowCountsNotTheClickedItem();
    void questionsStandInTheOrderOfTheAnswer();
    void questionStatusHasWordAndColour_data();
    void questionStatusHasWordAndColour();
    void anotherJobReplacesTheQuestions();
    void aFailedQuestionQueryClearsTheTable();
    void withoutACurrentRowTheUserIsAskedToSelect();
    void theQuestionTableIsPaintedAfterTheNotice();
    void aRefillKeepsTheQuestions();
};

namespace {

/// Counts how often a widget is painted once a message box has been closed.
class PaintsAfterBox : public QObject {
public:
    explicit PaintsAfterBox(QWidget *widget) : m_widget(widget) { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Hide && qobject_cast<QMessageBox *>(watched))
            count = 0;
        if (event->type() == QEvent::Paint && watched == m_widget)
            ++count;
        return false;
    }

    int count = 0;

private:
    QWidget *m_widget;
};

Odbpp_Questions question(int id, int flag, const char *title, const char *description)
{
    Odbpp_Questions question;
    question.id = id;
    question.title = title;
    question.description = description;
    question.checkFlag = flag;
    return question;
}

void clickCell(const DMS_Export_Widget &desk, int row, int column)
{
    auto *table = jobTable(desk);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                      table->visualItemRect(table->item(row, column)).center());
}

QString rowTexts(const QTableWidget *table, int row)
{
    QStringList texts;
    for (int column = 0; column < table->columnCount(); ++column)
        texts << (table->item(row, column) ? table->item(row, column)->text()
                                           : QStringLiteral("none"));
    return texts.join(QLatin1Char('/'));
}

} // namespace

void ExportWidgetQuestionsTest::theQuestionTableIsSetUp()
{
    const auto desk = makeDesk({Right::Admin});
    const auto *table = questionTable(*desk);
    QCOMPARE(table->columnCount(), 4);
    QStringList headers;
    for (int column = 0; column < 4; ++column) {
        headers << table->horizontalHeaderItem(column)->text();
        QCOMPARE(table->isColumnHidden(column), column == 0);
        QCOMPARE(table->horizontalHeader()->sectionResizeMode(column), QHeaderView::Stretch);
    }
    QCOMPARE(headers.join(QLatin1Char('/')), QStringLiteral("Id/标题/描述/状态"));
    QCOMPARE(table->selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(table->editTriggers(), QAbstractItemView::NoEditTriggers);
    QCOMPARE(table->selectionBehavior(), QTableWidget().selectionBehavior());
    QCOMPARE(table->rowCount(), 0);
}

void ExportWidgetQuestionsTest::aClickAsksForTheQuestionsOfTheRow()
{
    const auto desk = makeDesk({Right::Admin});
    FakeServices::instance().forgetCalls();
    clickCell(*desk, 1, 6);
    QCOMPARE(FakeServices::instance().operationLines(),
             QStringList({QStringLiteral("Odbpp_QuestionsBll::select({}, {JobId: 2})")}));
}

void ExportWidgetQuestionsTest::theCurrentRowCountsNotTheClickedItem()
{
    const auto desk = makeDesk({Right::Admin});
    jobTable(*desk)->setCurrentCell(2, 1);
    FakeServices::instance().forgetCalls();
    QVERIFY(QMetaObject::invokeMethod(desk.get(), "on_m_pJobTableWidget_ItemClicked",
                                      Q_ARG(QTableWidgetItem *, nullptr)));
    QVERIFY(QMetaObject::invokeMethod(desk.get(), "on_m_pJobTableWidget_ItemClicked",
                                      Q_ARG(QTableWidgetItem *, jobTable(*desk)->item(0, 0))));
    const QString line = QStringLiteral("Odbpp_QuestionsBll::select({}, {JobId: 3})");
    QCOMPARE(FakeServices::instance().operationLines(), QStringList({line, line}));
}

void ExportWidgetQuestionsTest::questionsStandInTheOrderOfTheAnswer()
{
    FakeServices::instance().questions.always(
        {{question(8, 0, "孔径", "第三层孔径不符"), question(2, 3, "a|r", "")}});
    const auto desk = makeDesk({Right::Admin});
    clickCell(*desk, 0, 1);
    const auto *table = questionTable(*desk);
    QCOMPARE(table->rowCount(), 2);
    QCOMPARE(rowTexts(table, 0), QStringLiteral("8/孔径/第三层孔径不符/未审核"));
    QCOMPARE(rowTexts(table, 1), QStringLiteral("2/a|r//完成"));
}

void ExportWidgetQuestionsTest::questionStatusHasWordAndColour_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<QString>("word");
    QTest::addColumn<QBrush>("colour");
    QTest::newRow("not reviewed") << 0 << QStringLiteral("未审核") << QBrush();
    QTest::newRow("failed") << 1 << QStringLiteral("审核未通过") << QBrush(QColor(Qt::red));
    QTest::newRow("passed") << 2 << QStringLiteral("审核通过") << QBrush(QColor(Qt::darkGreen));
    QTest::newRow("finished") << 3 << QStringLiteral("完成") << QBrush(QColor(Qt::blue));
    QTest::newRow("unknown") << 9 << QStringLiteral("未知") << QBrush();
}

void ExportWidgetQuestionsTest::questionStatusHasWordAndColour()
{
    QFETCH(int, flag);
    FakeServices::instance().questions.always({{question(1, flag, "t", "d")}});
    const auto desk = makeDesk({Right::Admin});
    clickCell(*desk, 0, 1);
    const auto *table = questionTable(*desk);
    QTEST(table->item(0, 3)->text(), "word");
    QTEST(table->item(0, 3)->foreground(), "colour");
    QCOMPARE(table->item(0, 1)->foreground(), QBrush());
}

void ExportWidgetQuestionsTest::anotherJobReplacesTheQuestions()
{
    FakeServices::instance().questions.once(
        {{question(1, 0, "one", ""), question(2, 0, "two", "")}});
    FakeServices::instance().questions.once({{question(3, 0, "three", "")}});
    const auto desk = makeDesk({Right::Admin});
    clickCell(*desk, 0, 1);
    QCOMPARE(questionTable(*desk)->rowCount(), 2);
    clickCell(*desk, 1, 1);
    QCOMPARE(columnTexts(questionTable(*desk), 1), QStringList({QStringLiteral("three")}));
    clickCell(*desk, 2, 1);
    QCOMPARE(questionTable(*desk)->rowCount(), 0);
}

void ExportWidgetQuestionsTest::aFailedQuestionQueryClearsTheTable()
{
    FakeServices::instance().questions.once({{question(1, 0, "one", "")}});
    FakeServices::instance().questions.once({{}, false});
    const auto desk = makeDesk({Right::Admin});
    KODMS::Fakes::MessageBoxProbe probe;
    clickCell(*desk, 0, 1);
    clickCell(*desk, 1, 1);
    QCOMPARE(questionTable(*desk)->rowCount(), 0);
    QCOMPARE(probe.count(), 0);
}

void ExportWidgetQuestionsTest::withoutACurrentRowTheUserIsAskedToSelect()
{
    FakeServices::instance().questions.once({{question(1, 0, "one", "")}});
    const auto desk = makeDesk({Right::Admin});
    clickCell(*desk, 0, 1);
    QTest::mouseClick(control(*desk, "m_pRefreshPB"), Qt::LeftButton);
    QCOMPARE(jobTable(*desk)->currentRow(), -1);
    FakeServices::instance().forgetCalls();
    KODMS::Fakes::MessageBoxProbe probe;
    QVERIFY(QMetaObject::invokeMethod(desk.get(), "on_m_pJobTableWidget_ItemClicked",
                                      Q_ARG(QTableWidgetItem *, nullptr)));
    QCOMPARE(probe.count(), 1);
    const auto box = probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.text, QStringLiteral("请选择一个料号"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent.data(), static_cast<QWidget *>(desk.get()));
    QVERIFY(FakeServices::instance().operations().isEmpty());
    QCOMPARE(questionTable(*desk)->rowCount(), 1);
}

/// At once: whatever waits for the event loop comes later than the slot's end.
void ExportWidgetQuestionsTest::theQuestionTableIsPaintedAfterTheNotice()
{
    const auto desk = makeDesk({Right::Admin});
    QVERIFY(QTest::qWaitForWindowExposed(desk.get()));
    const KODMS::Fakes::MessageBoxProbe probe;
    const PaintsAfterBox paints(questionTable(*desk));
    QMetaObject::invokeMethod(desk.get(), "on_m_pJobTableWidget_ItemClicked",
                              Q_ARG(QTableWidgetItem *, nullptr));
    QCOMPARE(probe.count(), 1);
    QCOMPARE(paints.count, 1);
}

void ExportWidgetQuestionsTest::aRefillKeepsTheQuestions()
{
    FakeServices::instance().questions.once({{question(1, 0, "one", "")}});
    const auto desk = makeDesk({Right::Admin});
    clickCell(*desk, 0, 1);
    QTest::keyClicks(control(*desk, "m_pJobFilterLE"), QStringLiteral("x"));
    answerWithFlows(0);
    QTest::mouseClick(control(*desk, "m_pRefreshPB"), Qt::LeftButton);
    QCOMPARE(questionTable(*desk)->rowCount(), 1);
}

KODMS_TEST_MAIN(ExportWidgetQuestionsTest, QApplication)
#include "ExportWidgetQuestionsTest.moc"
