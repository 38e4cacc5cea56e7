// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/DeskTest.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>

using namespace KODMS::Tests;
using KODMS::DataLib::Model::Odbpp_Questions;
using KODMS::UI::DMS_Export_Widget;

/// Questions of the clicked job, remarks typed into the table, header clicks.
class ExportWidgetDetailsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void theQuestionTableIsSetUp();
    void aClickAsksForTheQuestionsOfTheRow();
    void theCurrentRowCountsNotTheClickedItem();
    void questionsStandInTheOrderOfTheAnswer();
    void questionStatusHasWordAndColour_data();
    void questionStatusHasWordAndColour();
    void anotherJobReplacesTheQuestions();
    void aFailedQuestionQueryClearsTheTable();
    void withoutACurrentRowTheUserIsAskedToSelect();
    void aRefillKeepsTheQuestions();
    void aRemarkIsTypedIntoItsCell();
    void whateverCellIsEditedItsTextIsTheRemark_data();
    void whateverCellIsEditedItsTextIsTheRemark();
    void equalTextsElsewhereDoNotMisleadTheRemark();
    void anUnchangedTextIsNotStoredAgain();
    void anAbandonedEditStoresNothing();
    void aFailedRemarkIsNotReported();
    void aRemarkAfterSortingBelongsToItsRow();
    void aRowWithoutAGuidSendsAnEmptyOne();
    void headerClicksSortThePage();
    void anotherHeaderStartsAscending();
    void theOrderOfClicksSurvivesARefill();
    void sortingAsksNobody();

private:
    static Odbpp_Questions question(int id, int flag, const char *title, const char *description);
    static void clickCell(const DMS_Export_Widget &desk, int row, int column);
    static void clickHeader(const DMS_Export_Widget &desk, int column);
    static void typeInto(const DMS_Export_Widget &desk, int row, int column, const QString &text,
                         Qt::Key end = Qt::Key_Return);
    static QStringList remarks();
    static QString rowTexts(const QTableWidget *table, int row);
};

void ExportWidgetDetailsTest::init()
{
    FakeServices::instance().reset();
    FakeServices::instance().setUser(42);
    answerWithFlows(3);
}

Odbpp_Questions ExportWidgetDetailsTest::question(int id, int flag, const char *title,
                                                  const char *description)
{
    Odbpp_Questions question;
    question.id = id;
    question.title = title;
    question.description = description;
    question.checkFlag = flag;
    return question;
}

void ExportWidgetDetailsTest::clickCell(const DMS_Export_Widget &desk, int row, int column)
{
    auto *table = jobTable(desk);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                      table->visualItemRect(table->item(row, column)).center());
}

void ExportWidgetDetailsTest::clickHeader(const DMS_Export_Widget &desk, int column)
{
    auto *header = jobTable(desk)->horizontalHeader();
    const QPoint middle(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                        header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, middle);
}

/// Opens the cell's editor as a user does, types, and ends with a key.
void ExportWidgetDetailsTest::typeInto(const DMS_Export_Widget &desk, int row, int column,
                                       const QString &text, Qt::Key end)
{
    auto *table = jobTable(desk);
    const QPoint cell = table->visualItemRect(table->item(row, column)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    auto *editor = table->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    editor->selectAll();
    if (!text.isEmpty())
        QTest::keyClicks(editor, text);
    QTest::keyClick(editor, end);
    QTRY_VERIFY(!table->viewport()->findChild<QLineEdit *>());
}

QStringList ExportWidgetDetailsTest::remarks()
{
    QStringList lines;
    const auto calls = FakeServices::instance().calls("Odbpp_JobFlowBll::UpdateTips");
    for (const auto &call : calls)
        lines << KODMS::Fakes::printable(call);
    return lines;
}

QString ExportWidgetDetailsTest::rowTexts(const QTableWidget *table, int row)
{
    QStringList texts;
    for (int column = 0; column < table->columnCount(); ++column)
        texts << (table->item(row, column) ? table->item(row, column)->text()
                                           : QStringLiteral("none"));
    return texts.join(QLatin1Char('/'));
}

void ExportWidgetDetailsTest::theQuestionTableIsSetUp()
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
    QCOMPARE(table->rowCount(), 0);
}

void ExportWidgetDetailsTest::aClickAsksForTheQuestionsOfTheRow()
{
    const auto desk = makeDesk({Right::Admin});
    FakeServices::instance().forgetCalls();
    clickCell(*desk, 1, 6);
    QCOMPARE(FakeServices::instance().operationLines(),
             QStringList({QStringLiteral("Odbpp_QuestionsBll::select({}, {JobId: 2})")}));
}

void ExportWidgetDetailsTest::theCurrentRowCountsNotTheClickedItem()
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

void ExportWidgetDetailsTest::questionsStandInTheOrderOfTheAnswer()
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

void ExportWidgetDetailsTest::questionStatusHasWordAndColour_data()
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

void ExportWidgetDetailsTest::questionStatusHasWordAndColour()
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

void ExportWidgetDetailsTest::anotherJobReplacesTheQuestions()
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

void ExportWidgetDetailsTest::aFailedQuestionQueryClearsTheTable()
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

void ExportWidgetDetailsTest::withoutACurrentRowTheUserIsAskedToSelect()
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

void ExportWidgetDetailsTest::aRefillKeepsTheQuestions()
{
    FakeServices::instance().questions.once({{question(1, 0, "one", "")}});
    const auto desk = makeDesk({Right::Admin});
    clickCell(*desk, 0, 1);
    QTest::keyClicks(control(*desk, "m_pJobFilterLE"), QStringLiteral("x"));
    answerWithFlows(0);
    QTest::mouseClick(control(*desk, "m_pRefreshPB"), Qt::LeftButton);
    QCOMPARE(questionTable(*desk)->rowCount(), 1);
}

void ExportWidgetDetailsTest::aRemarkIsTypedIntoItsCell()
{
    const auto desk = makeDesk({Right::Admin});
    typeInto(*desk, 1, 12, QStringLiteral("urgent"));
    QCOMPARE(
        remarks(),
        QStringList({QStringLiteral("Odbpp_JobFlowBll::UpdateTips(42, \"urgent\", \"guid2\")")}));
    QCOMPARE(jobTable(*desk)->item(1, 12)->text(), QStringLiteral("urgent"));
}

void ExportWidgetDetailsTest::whateverCellIsEditedItsTextIsTheRemark_data()
{
    QTest::addColumn<int>("column");
    const int visible[] = {1, 2, 6, 7, 9, 12, 17};
    for (const int column : visible)
        QTest::addRow("column %d", column) << column;
}

void ExportWidgetDetailsTest::whateverCellIsEditedItsTextIsTheRemark()
{
    QFETCH(int, column);
    const auto desk = makeDesk({Right::Admin});
    typeInto(*desk, 2, column, QStringLiteral("name"));
    QCOMPARE(
        remarks(),
        QStringList({QStringLiteral("Odbpp_JobFlowBll::UpdateTips(42, \"name\", \"guid3\")")}));
}

/// Every flow here has the same original name and remark.
void ExportWidgetDetailsTest::equalTextsElsewhereDoNotMisleadTheRemark()
{
    const auto desk = makeDesk({Right::Admin});
    jobTable(*desk)->item(2, 12)->setText(QStringLiteral("x"));
    jobTable(*desk)->item(2, 12)->setText(QStringLiteral("board"));
    jobTable(*desk)->item(1, 2)->setText(QStringLiteral("guid1"));
    QCOMPARE(
        remarks(),
        QStringList({QStringLiteral("Odbpp_JobFlowBll::UpdateTips(42, \"x\", \"guid3\")"),
                     QStringLiteral("Odbpp_JobFlowBll::UpdateTips(42, \"board\", \"guid3\")"),
                     QStringLiteral("Odbpp_JobFlowBll::UpdateTips(42, \"guid1\", \"guid2\")")}));
}

void ExportWidgetDetailsTest::anUnchangedTextIsNotStoredAgain()
{
    const auto desk = makeDesk({Right::Admin});
    typeInto(*desk, 0, 12, QString());
    QVERIFY(remarks().isEmpty());
}

void ExportWidgetDetailsTest::anAbandonedEditStoresNothing()
{
    const auto desk = makeDesk({Right::Admin});
    typeInto(*desk, 0, 12, QStringLiteral("never mind"), Qt::Key_Escape);
    QVERIFY(remarks().isEmpty());
    QCOMPARE(jobTable(*desk)->item(0, 12)->text(), QStringLiteral("board"));
}

void ExportWidgetDetailsTest::aFailedRemarkIsNotReported()
{
    FakeServices::instance().result("Odbpp_JobFlowBll::UpdateTips").always(0);
    const auto desk = makeDesk({Right::Admin});
    KODMS::Fakes::MessageBoxProbe probe;
    const int before = searches();
    typeInto(*desk, 0, 12, QStringLiteral("lost"));
    QCOMPARE(remarks().size(), 1);
    QCOMPARE(probe.count(), 0);
    QCOMPARE(searches(), before);
    QCOMPARE(jobTable(*desk)->item(0, 12)->text(), QStringLiteral("lost"));
}

void ExportWidgetDetailsTest::aRemarkAfterSortingBelongsToItsRow()
{
    const auto desk = makeDesk({Right::Admin});
    clickHeader(*desk, 1);
    clickHeader(*desk, 1);
    typeInto(*desk, 0, 12, QStringLiteral("top"));
    QCOMPARE(remarks(),
             QStringList({QStringLiteral("Odbpp_JobFlowBll::UpdateTips(42, \"top\", \"guid3\")")}));
}

void ExportWidgetDetailsTest::aRowWithoutAGuidSendsAnEmptyOne()
{
    FakeServices::instance().flowPages.always({{{}}, 1});
    const auto desk = makeDesk({Right::Admin});
    jobTable(*desk)->item(0, 12)->setText(QStringLiteral("x"));
    QCOMPARE(remarks(),
             QStringList({QStringLiteral("Odbpp_JobFlowBll::UpdateTips(42, \"x\", \"\")")}));
}

void ExportWidgetDetailsTest::headerClicksSortThePage()
{
    FakeServices::instance().flowPages.always({{someFlow(5), someFlow(40), someFlow(9)}, 3});
    const auto desk = makeDesk({Right::Admin});
    const auto ids = [&] { return columnTexts(jobTable(*desk), 0).join(QLatin1Char(' ')); };
    QCOMPARE(ids(), QStringLiteral("5 40 9"));
    clickHeader(*desk, 1);
    QCOMPARE(ids(), QStringLiteral("5 9 40"));
    clickHeader(*desk, 1);
    QCOMPARE(ids(), QStringLiteral("40 9 5"));
    clickHeader(*desk, 1);
    QCOMPARE(ids(), QStringLiteral("5 9 40"));
}

void ExportWidgetDetailsTest::anotherHeaderStartsAscending()
{
    auto first = someFlow(1);
    first.preUserRealName = "b";
    auto second = someFlow(2);
    second.preUserRealName = "a";
    FakeServices::instance().flowPages.always({{first, second}, 2});
    const auto desk = makeDesk({Right::Admin});
    const auto ids = [&] { return columnTexts(jobTable(*desk), 0).join(QLatin1Char(' ')); };
    clickHeader(*desk, 1);
    clickHeader(*desk, 9);
    QCOMPARE(ids(), QStringLiteral("2 1"));
    clickHeader(*desk, 1);
    QCOMPARE(ids(), QStringLiteral("1 2"));
}

void ExportWidgetDetailsTest::theOrderOfClicksSurvivesARefill()
{
    const auto desk = makeDesk({Right::Admin});
    const auto ids = [&] { return columnTexts(jobTable(*desk), 0).join(QLatin1Char(' ')); };
    clickHeader(*desk, 1);
    clickHeader(*desk, 1);
    QCOMPARE(ids(), QStringLiteral("3 2 1"));
    QTest::mouseClick(control(*desk, "m_pRefreshPB"), Qt::LeftButton);
    QCOMPARE(ids(), QStringLiteral("1 2 3"));
    clickHeader(*desk, 1);
    QCOMPARE(ids(), QStringLiteral("1 2 3"));
    QTest::mouseClick(control(*desk, "m_pRefreshPB"), Qt::LeftButton);
    clickHeader(*desk, 1);
    QCOMPARE(ids(), QStringLiteral("3 2 1"));
}

void ExportWidgetDetailsTest::sortingAsksNobody()
{
    const auto desk = makeDesk({Right::Admin});
    FakeServices::instance().forgetCalls();
    clickHeader(*desk, 2);
    clickHeader(*desk, 6);
    QVERIFY(FakeServices::instance().calls().isEmpty());
}

KODMS_TEST_MAIN(ExportWidgetDetailsTest, QApplication)
#include "ExportWidgetDetailsTest.moc"
