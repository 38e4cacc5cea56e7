// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/ConditionLines.h"
#include "tests/desks/DeskTest.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>

Q_DECLARE_METATYPE(QTableWidgetItem *)

using namespace KODMS::Tests;

/// When the job-flow desk searches, and what it makes of the answer.
class ExportWidgetSearchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { qRegisterMetaType<QTableWidgetItem *>(); }

    void init() { FakeServices::instance().reset(); }

    void theJobTableIsSetUp();
    void construction();
    void theFirstFillPrecedesTheAssignees();
    void aDeskThatIsBeingBuiltHearsNothing();
    void everyKeystrokeSearches_data();
    void everyKeystrokeSearches();
    void theStatusFilterSearches();
    void aPageIsShownInTheOrderOfTheAnswer();
    void statusCellsAreColoured();
    void thirtyAreOnePageThirtyOneAreTwo_data();
    void thirtyAreOnePageThirtyOneAreTwo();
    void pagesAreReachedThroughTheBar();
    void aShrunkenResultIsAskedForTwice();
    void theSecondAnswerReplacesTheFirst();
    void thePageSurvivesARefill();
    void nothingFoundEmptiesAndSilencesTheTable();
    void nothingFoundKeepsThePage();
    void aSilentTableStoresNoRemark();
    void flowsFoundAgainGiveTheTableItsVoice();
    void aFailedQueryWithoutACountShowsNothing();
    void aFailedQueryThatCountsIsShown();
    void fillingNeverStoresARemark();
    void rowsAreRemovedInSilence();
    void refreshRemovesTheRowsAloud();
    void theFieldComboDoesNotChangeTheList();
    void nothingIsSelectedAfterAFill();

private:
    static QString pageField(const KODMS::UI::DMS_Export_Widget &desk)
    {
        return control<QLineEdit>(desk, "m_pGotoPageLE")->text();
    }

    static QString pageTotal(const KODMS::UI::DMS_Export_Widget &desk)
    {
        return control<QLabel>(desk, "m_pTotalLabel")->text();
    }

    static void click(const KODMS::UI::DMS_Export_Widget &desk, const char *button)
    {
        QTest::mouseClick(control(desk, button), Qt::LeftButton);
    }

    static void typeJob(const KODMS::UI::DMS_Export_Widget &desk, const QString &text)
    {
        QTest::keyClicks(control(desk, "m_pJobFilterLE"), text);
    }
};

void ExportWidgetSearchTest::theJobTableIsSetUp()
{
    const auto desk = makeDesk();
    const auto *table = jobTable(*desk);
    QCOMPARE(table->columnCount(), 18);
    QStringList headers;
    QList<int> visible;
    for (int column = 0; column < 18; ++column) {
        headers << table->horizontalHeaderItem(column)->text();
        if (!table->isColumnHidden(column))
            visible << column;
    }
    QCOMPARE(headers.join(QLatin1Char('/')),
             QStringLiteral("Id/料号名称/原始料名/最新上传时间/板层/feature数/状态/前处理审核时间/"
                            "FGuid/前处理人/前处理审核人/审核人ID/料号管理备注/uuid/是否web端/"
                            "order表suffix/pro_origfiles表suffix/批号"));
    QCOMPARE(visible, QList<int>({1, 2, 6, 7, 9, 12, 17}));
    QCOMPARE(table->selectionMode(), QAbstractItemView::ExtendedSelection);
    QCOMPARE(table->selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(table->editTriggers(), QTableWidget().editTriggers());
    QVERIFY(!table->isSortingEnabled());
    QVERIFY(!table->horizontalHeader()->stretchLastSection());
    QVERIFY(!table->verticalHeader()->isHidden());
}

void ExportWidgetSearchTest::construction()
{
    answerWithFlows(2);
    const auto desk = makeDesk({Right::Admin});
    QCOMPARE(searches(), 1);
    QCOMPARE(columnTexts(jobTable(*desk), 0),
             QStringList({QStringLiteral("1"), QStringLiteral("2")}));
    QVERIFY(!jobTable(*desk)->signalsBlocked());
}

void ExportWidgetSearchTest::theFirstFillPrecedesTheAssignees()
{
    FakeServices::instance().users.always({{{4, "张伟", 3, 10}, {5, "Anna", 2, 6}}});
    const auto desk = makeDesk();
    QStringList names;
    const auto operations = FakeServices::instance().operations();
    for (const auto &call : operations)
        names << call.name;
    QCOMPARE(names, QStringList({QStringLiteral("Odbpp_Flow_ViewBll::selectAndCountBySearchModel"),
                                 QStringLiteral("User_ViewBll::select")}));
    const auto *combo = control<QComboBox>(*desk, "m_pAssignerCMB");
    QCOMPARE(combo->count(), 1);
    QCOMPARE(combo->itemText(0), QStringLiteral("张伟"));
}

/// Whoever asks for a refresh while the first fill runs gets it from that fill.
void ExportWidgetSearchTest::aDeskThatIsBeingBuiltHearsNothing()
{
    FakeServices::instance().flowPages.compute([](const auto &) {
        if (searches() == 1)
            FakeServices::instance().raiseRefreshExportJobTable();
        return KODMS::Fakes::Page<KODMS::DataLib::Model::Odbpp_Flow_View>{{someFlow(1)}, 1};
    });
    const auto desk = makeDesk({Right::Admin});
    QCOMPARE(searches(), 1);
    QCOMPARE(jobTable(*desk)->rowCount(), 1);
}

void ExportWidgetSearchTest::everyKeystrokeSearches_data()
{
    QTest::addColumn<QByteArray>("edit");
    const char *const edits[] = {"m_pJobFilterLE", "m_pPrerFilterLE", "m_pCheckerFilterLE"};
    for (const char *edit : edits)
        QTest::newRow(edit) << QByteArray(edit);
}

void ExportWidgetSearchTest::everyKeystrokeSearches()
{
    QFETCH(QByteArray, edit);
    const auto desk = makeDesk({Right::Admin});
    auto *field = control(*desk, edit.constData());
    QTest::keyClicks(field, QStringLiteral("abc"));
    QCOMPARE(searches(), 4);
    QCOMPARE(conditions(1).front().value, std::string("a"));
    QCOMPARE(conditions(2).front().value, std::string("ab"));
    QCOMPARE(conditions(3).front().value, std::string("abc"));
    QTest::keyClick(field, Qt::Key_Backspace);
    QCOMPARE(conditions(4).front().value, std::string("ab"));
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(searches(), 5);
}

void ExportWidgetSearchTest::theStatusFilterSearches()
{
    const auto desk = makeDesk({Right::Admin});
    auto *combo = control<QComboBox>(*desk, "m_pStatusFilterCMB");
    QTest::keyClick(combo, Qt::Key_Down);
    QCOMPARE(combo->currentIndex(), 1);
    QCOMPARE(searches(), 2);
    QTest::keyClick(combo, Qt::Key_End);
    QCOMPARE(combo->currentIndex(), 6);
    QCOMPARE(searches(), 3);
}

void ExportWidgetSearchTest::aPageIsShownInTheOrderOfTheAnswer()
{
    FakeServices::instance().flowPages.once({{someFlow(9), someFlow(3), someFlow(5)}, 3});
    const auto desk = makeDesk({Right::Admin});
    QCOMPARE(columnTexts(jobTable(*desk), 0),
             QStringList({QStringLiteral("9"), QStringLiteral("3"), QStringLiteral("5")}));
    QCOMPARE(columnTexts(jobTable(*desk), 1),
             QStringList({QStringLiteral("A1B100009"), QStringLiteral("A1B100003"),
                          QStringLiteral("A1B100005")}));
    QCOMPARE(columnTexts(jobTable(*desk), 8).first(), QStringLiteral("guid9"));
}

void ExportWidgetSearchTest::statusCellsAreColoured()
{
    auto failed = someFlow(1);
    failed.flowStatus = 1;
    failed.checkFlag = 1;
    auto finished = someFlow(2);
    finished.flowStatus = 3;
    finished.checkFlag = 2;
    auto odd = someFlow(3);
    odd.flowStatus = 3;
    FakeServices::instance().flowPages.always({{failed, finished, odd}, 3});
    const auto desk = makeDesk({Right::Admin});
    const auto *table = jobTable(*desk);
    QCOMPARE(columnTexts(table, 6),
             QStringList({QStringLiteral("前处理未过"), QStringLiteral("流程完成"),
                          QStringLiteral("未知")}));
    QCOMPARE(table->item(0, 6)->foreground().color(), QColor(Qt::red));
    QCOMPARE(table->item(1, 6)->foreground().color(), QColor(Qt::darkGreen));
    QCOMPARE(table->item(2, 6)->foreground(), QBrush());
    QCOMPARE(table->item(0, 1)->foreground(), QBrush());
}

void ExportWidgetSearchTest::thirtyAreOnePageThirtyOneAreTwo_data()
{
    QTest::addColumn<int>("total");
    QTest::addColumn<bool>("bar");
    QTest::newRow("thirty") << 30 << false;
    QTest::newRow("thirty-one") << 31 << true;
}

void ExportWidgetSearchTest::thirtyAreOnePageThirtyOneAreTwo()
{
    QFETCH(int, total);
    answerWithFlows(total);
    const auto desk = makeDesk({Right::Admin});
    QCOMPARE(jobTable(*desk)->rowCount(), 30);
    QTEST(control(*desk, "m_TurnPage")->isVisible(), "bar");
}

void ExportWidgetSearchTest::pagesAreReachedThroughTheBar()
{
    answerWithFlows(75);
    const auto desk = makeDesk({Right::Admin});
    click(*desk, "m_pPageDownPB");
    QCOMPARE(conditions().back().pageStart, std::string("30"));
    QCOMPARE(columnTexts(jobTable(*desk), 0).first(), QStringLiteral("31"));
    click(*desk, "m_pLastPagePB");
    QCOMPARE(jobTable(*desk)->rowCount(), 15);
    QCOMPARE(columnTexts(jobTable(*desk), 0).last(), QStringLiteral("75"));
    click(*desk, "m_pPageUpPB");
    QCOMPARE(jobTable(*desk)->rowCount(), 30);
    click(*desk, "m_pFirstPagePB");
    QCOMPARE(columnTexts(jobTable(*desk), 0).first(), QStringLiteral("1"));
    QCOMPARE(searches(), 5);
    auto *field = control<QLineEdit>(*desk, "m_pGotoPageLE");
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("2"));
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(columnTexts(jobTable(*desk), 0).first(), QStringLiteral("31"));
    QCOMPARE(searches(), 6);
}

void ExportWidgetSearchTest::aShrunkenResultIsAskedForTwice()
{
    answerWithFlows(150);
    const auto desk = makeDesk({Right::Admin});
    click(*desk, "m_pLastPagePB");
    QCOMPARE(pageField(*desk), QStringLiteral("5"));
    answerWithFlows(45);
    const int before = searches();
    typeJob(*desk, QStringLiteral("x"));
    QCOMPARE(searches(), before + 2);
    QCOMPARE(conditions(before).back().pageStart, std::string("120"));
    QCOMPARE(conditions(before + 1).back().pageStart, std::string("30"));
    auto first = conditions(before);
    first.back().pageStart = "30";
    QCOMPARE(allFields(conditions(before + 1)), allFields(first));
    QCOMPARE(allFields(countConditions(before + 1)), allFields(countConditions(before)));
    QCOMPARE(pageField(*desk), QStringLiteral("2"));
    QCOMPARE(pageTotal(*desk), QStringLiteral("/ 2"));
    QCOMPARE(jobTable(*desk)->rowCount(), 15);
    QCOMPARE(columnTexts(jobTable(*desk), 0).first(), QStringLiteral("31"));
}

/// A service that fills rows although it counts fewer pages does not double them.
void ExportWidgetSearchTest::theSecondAnswerReplacesTheFirst()
{
    answerWithFlows(150);
    const auto desk = makeDesk({Right::Admin});
    click(*desk, "m_pLastPagePB");
    FakeServices::instance().flowPages.once({{someFlow(1), someFlow(2)}, 31});
    FakeServices::instance().flowPages.once({{someFlow(31)}, 31});
    typeJob(*desk, QStringLiteral("x"));
    QCOMPARE(columnTexts(jobTable(*desk), 0), QStringList({QStringLiteral("31")}));
}

void ExportWidgetSearchTest::thePageSurvivesARefill()
{
    answerWithFlows(150);
    const auto desk = makeDesk({Right::Admin});
    click(*desk, "m_pPageDownPB");
    click(*desk, "m_pRefreshPB");
    QCOMPARE(conditions().back().pageStart, std::string("30"));
    typeJob(*desk, QStringLiteral("x"));
    QCOMPARE(conditions().back().pageStart, std::string("30"));
    QCOMPARE(pageField(*desk), QStringLiteral("2"));
}

void ExportWidgetSearchTest::nothingFoundEmptiesAndSilencesTheTable()
{
    answerWithFlows(61);
    const auto desk = makeDesk({Right::Admin});
    KODMS::Fakes::MessageBoxProbe probe;
    answerWithFlows(0);
    typeJob(*desk, QStringLiteral("x"));
    QCOMPARE(jobTable(*desk)->rowCount(), 0);
    QVERIFY(!control(*desk, "m_TurnPage")->isVisible());
    QCOMPARE(pageTotal(*desk), QStringLiteral("/ 0"));
    QVERIFY(jobTable(*desk)->signalsBlocked());
    QCOMPARE(searches(), 2);
    QCOMPARE(probe.count(), 0);
}

void ExportWidgetSearchTest::nothingFoundKeepsThePage()
{
    answerWithFlows(150);
    const auto desk = makeDesk({Right::Admin});
    click(*desk, "m_pLastPagePB");
    answerWithFlows(0);
    const int before = searches();
    typeJob(*desk, QStringLiteral("x"));
    QCOMPARE(searches(), before + 1);
    answerWithFlows(150);
    typeJob(*desk, QStringLiteral("y"));
    QCOMPARE(conditions().back().pageStart, std::string("120"));
    QCOMPARE(columnTexts(jobTable(*desk), 0).first(), QStringLiteral("121"));
}

void ExportWidgetSearchTest::aSilentTableStoresNoRemark()
{
    const auto desk = makeDesk({Right::Admin});
    auto *table = jobTable(*desk);
    table->setRowCount(1);
    table->setItem(0, 12, new QTableWidgetItem(QStringLiteral("a")));
    table->item(0, 12)->setText(QStringLiteral("b"));
    QSignalSpy clicked(table, SIGNAL(itemClicked(QTableWidgetItem *)));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                      table->visualItemRect(table->item(0, 12)).center());
    QCOMPARE(clicked.count(), 0);
    QCOMPARE(FakeServices::instance().count("Odbpp_JobFlowBll::UpdateTips"), 0);
    QCOMPARE(FakeServices::instance().count("Odbpp_QuestionsBll::select"), 0);
}

void ExportWidgetSearchTest::flowsFoundAgainGiveTheTableItsVoice()
{
    const auto desk = makeDesk({Right::Admin});
    QVERIFY(jobTable(*desk)->signalsBlocked());
    answerWithFlows(1);
    typeJob(*desk, QStringLiteral("x"));
    QVERIFY(!jobTable(*desk)->signalsBlocked());
    jobTable(*desk)->item(0, 12)->setText(QStringLiteral("b"));
    QCOMPARE(FakeServices::instance().count("Odbpp_JobFlowBll::UpdateTips"), 1);
}

void ExportWidgetSearchTest::aFailedQueryWithoutACountShowsNothing()
{
    FakeServices::instance().flowPages.always({{someFlow(1)}, 0, false});
    KODMS::Fakes::MessageBoxProbe probe;
    const auto desk = makeDesk({Right::Admin});
    QCOMPARE(jobTable(*desk)->rowCount(), 0);
    QCOMPARE(probe.count(), 0);
}

void ExportWidgetSearchTest::aFailedQueryThatCountsIsShown()
{
    FakeServices::instance().flowPages.always({{someFlow(1)}, 1, false});
    const auto desk = makeDesk({Right::Admin});
    QCOMPARE(jobTable(*desk)->rowCount(), 1);
}

void ExportWidgetSearchTest::fillingNeverStoresARemark()
{
    answerWithFlows(75);
    const auto desk = makeDesk({Right::Admin});
    typeJob(*desk, QStringLiteral("ab"));
    click(*desk, "m_pRefreshPB");
    click(*desk, "m_pLastPagePB");
    FakeServices::instance().raiseRefreshExportJobTable();
    QCOMPARE(FakeServices::instance().count("Odbpp_JobFlowBll::UpdateTips"), 0);
}

void ExportWidgetSearchTest::rowsAreRemovedInSilence()
{
    answerWithFlows(3);
    const auto desk = makeDesk({Right::Admin});
    jobTable(*desk)->setCurrentCell(2, 1);
    QSignalSpy current(jobTable(*desk),
                       SIGNAL(currentItemChanged(QTableWidgetItem *, QTableWidgetItem *)));
    QSignalSpy selection(jobTable(*desk), SIGNAL(itemSelectionChanged()));
    typeJob(*desk, QStringLiteral("x"));
    QCOMPARE(current.count(), 0);
    QCOMPARE(selection.count(), 0);
    QCOMPARE(jobTable(*desk)->rowCount(), 3);
}

void ExportWidgetSearchTest::refreshRemovesTheRowsAloud()
{
    answerWithFlows(3);
    const auto desk = makeDesk({Right::Admin});
    jobTable(*desk)->setCurrentCell(2, 1);
    QSignalSpy current(jobTable(*desk),
                       SIGNAL(currentItemChanged(QTableWidgetItem *, QTableWidgetItem *)));
    click(*desk, "m_pRefreshPB");
    QVERIFY(current.count() > 0);
    QCOMPARE(jobTable(*desk)->rowCount(), 3);
}

void ExportWidgetSearchTest::theFieldComboDoesNotChangeTheList()
{
    const auto desk = makeDesk({Right::Admin});
    control<QLineEdit>(*desk, "m_pFilterLE")->setText(QStringLiteral("ignored"));
    for (int index = 1; index < 5; ++index) {
        control<QComboBox>(*desk, "m_pFilterCMB")->setCurrentIndex(index);
        QCOMPARE(allFields(conditions()), allFields(conditions(0)));
    }
    QCOMPARE(searches(), 5);
}

void ExportWidgetSearchTest::nothingIsSelectedAfterAFill()
{
    answerWithFlows(3);
    const auto desk = makeDesk({Right::Admin});
    jobTable(*desk)->selectRow(1);
    click(*desk, "m_pRefreshPB");
    QVERIFY(jobTable(*desk)->selectedItems().isEmpty());
    QCOMPARE(jobTable(*desk)->currentRow(), -1);
}

KODMS_TEST_MAIN(ExportWidgetSearchTest, QApplication)
#include "ExportWidgetSearchTest.moc"
