// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/status/FlowStatus.h"
#include "tests/desks/ConditionLines.h"
#include "tests/desks/DownloadDesk.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace KODMS::Tests;
using KODMS::Fakes::ConditionList;

/// The order history, which most users get on the original-file desk.
class DownloadWidgetHistoryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void theTableIsSetUp_data();
    void theTableIsSetUp();
    void theConditions_data();
    void theConditions();
    void theUserIsFetchedForEachCondition();
    void everyColumnIsFilled();
    void statusWordsAreThoseOfTheJobFlowDesk_data();
    void statusWordsAreThoseOfTheJobFlowDesk();
    void nobodyIsConcerned();
    void thirtyAreOnePageThirtyOneAreTwo_data();
    void thirtyAreOnePageThirtyOneAreTwo();
    void pagesAreReachedThroughTheBar();
    void aShrunkenResultIsAskedForTwice();
    void theFirstAnswerOfTwoIsForgotten();
    void nothingFoundEmptiesTheTable();
    void nothingFoundTakesTheBarsRows();
    void theTextIsReadFromTheSearchBox();
    void cellsAreNotEdited();
    void headerClicksSortThePage();
    void noMenuIsOffered();
    void nobodyIsToldAnything();
};

namespace {

using Rights = QVector<Right>;

const Rights PreProcessor = {Right::PreProcess};

void click(const QObject &desk, const char *button)
{
    QTest::mouseClick(control(desk, button), Qt::LeftButton);
}

void type(const QObject &desk, const QString &text)
{
    QTest::keyClicks(control(desk, "m_pFilterLE"), text);
}

QString ids(const QObject &desk)
{
    return columnTexts(jobTable(desk), 0).join(QLatin1Char(' '));
}

/// What the history asks for, without the page window.
ConditionList historyOf(const char *user)
{
    return {Expected("Flow_FlowStatus", "2").open(),
            Expected("Flow_FlowStatus", "3").orJoin(),
            Expected("Flow_CheckFlag", "2").close(),
            Expected("Flow_LastOdbppImportUserId", user).open(),
            Expected("Flow_CreateUserId", user).orJoin(),
            Expected("OFAssign_ExecutorId", user).orJoin(),
            Expected("PCAssign_ExecutorId", user).orJoin().close().sorted("Flow_CreateTime")};
}

ConditionList firstPage(ConditionList list)
{
    list.back().pageEnabled = 1;
    list.back().pageStart = "0";
    list.back().pageSize = "30";
    return list;
}

} // namespace

void DownloadWidgetHistoryTest::theTableIsSetUp_data()
{
    QTest::addColumn<Rights>("rights");
    const auto all =
        combinations({Right::PreProcess, Right::OrigFileUpdate, Right::OrigFileAssign});
    for (const Rights &rights : all)
        QTest::newRow(qPrintable(rightNames(rights))) << rights;
}

void DownloadWidgetHistoryTest::theTableIsSetUp()
{
    QFETCH(Rights, rights);
    const auto desk = makeDownloadDesk(rights);
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
    QCOMPARE(visible, QList<int>({1, 2, 6, 7, 9, 10, 12, 17}));
    QCOMPARE(table->selectionMode(), QAbstractItemView::ExtendedSelection);
    QCOMPARE(table->selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(table->editTriggers(), QAbstractItemView::NoEditTriggers);
    QVERIFY(!table->isSortingEnabled());
}

void DownloadWidgetHistoryTest::theConditions_data()
{
    QTest::addColumn<Rights>("rights");
    QTest::addColumn<int>("item");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("searched");
    const Rights adminToo = {Right::PreProcess, Right::Admin};
    QTest::newRow("everything") << PreProcessor << 0 << QByteArray() << false;
    QTest::newRow("job name, no text") << PreProcessor << 1 << QByteArray() << false;
    QTest::newRow("everything, text") << PreProcessor << 0 << QByteArray("A1B") << false;
    QTest::newRow("job name, text") << PreProcessor << 1 << QByteArray("A1B") << true;
    QTest::newRow("job name, Chinese") << PreProcessor << 1 << QByteArray(" 主板 ") << true;
    QTest::newRow("nothing chosen") << PreProcessor << -1 << QByteArray("A1B") << false;
    for (int item = 0; item < 9; ++item)
        QTest::addRow("administrator, item %d", item)
            << adminToo << item << QByteArray("A1B") << (item == 1);
}

/// The text counts at the second item of either combo, and nowhere else; the
/// groups are exact whether it does or not.
void DownloadWidgetHistoryTest::theConditions()
{
    QFETCH(Rights, rights);
    QFETCH(int, item);
    QFETCH(QByteArray, text);
    QFETCH(bool, searched);
    const auto desk = makeDownloadDesk(rights);
    control<QLineEdit>(*desk, "m_pFilterLE")->setText(QString::fromUtf8(text));
    control<QComboBox>(*desk, "m_pFilterCMB")->setCurrentIndex(item);
    click(*desk, "m_pRefreshPB");
    ConditionList expected = historyOf("42");
    if (searched)
        expected.insert(expected.begin(), Expected("KoJobName", text.constData()).fuzzy());
    QCOMPARE(allFields(countConditions()), allFields(expected));
    QCOMPARE(allFields(conditions()), allFields(firstPage(expected)));
}

void DownloadWidgetHistoryTest::theUserIsFetchedForEachCondition()
{
    const auto desk = makeDownloadDesk(PreProcessor);
    FakeServices::instance().setUser(7);
    FakeServices::instance().forgetCalls();
    click(*desk, "m_pRefreshPB");
    QCOMPARE(allFields(countConditions()), allFields(historyOf("7")));
    QCOMPARE(FakeServices::instance().count("DMS_StdCommon::getCurrentUser"), 4);
}

void DownloadWidgetHistoryTest::everyColumnIsFilled()
{
    auto flow = someFlow(9);
    flow.odbppUploaded = 1;
    flow.odbppUploadTime = "imported";
    flow.layerCount = 4;
    flow.featureCount = 5;
    flow.flowStatus = 2;
    flow.checkFlag = 2;
    flow.preCheckTime = "checked";
    flow.preUserRealName = "王芳";
    flow.preCheckUserRealName = "李强";
    flow.preCheckUserId = 77;
    flow.uuid = "u.tgz";
    flow.webFlag = 1;
    flow.orderSuffix = "zip";
    flow.origFileSuffix = "tgz";
    flow.batchNumber = 3;
    FakeServices::instance().flowPages.always({{flow, someFlow(3)}, 2});
    const auto desk = makeDownloadDesk(PreProcessor);
    QCOMPARE(ids(*desk), QStringLiteral("9 3"));
    QStringList texts;
    for (int column = 0; column < 18; ++column)
        texts << jobTable(*desk)->item(0, column)->text();
    QCOMPARE(texts.join(QLatin1Char('/')),
             QStringLiteral("9/A1B100009/board/imported/4/5/机器人通过/checked/guid9/王芳/李强/77/"
                            "board/u.tgz/1/zip/tgz/3"));
}

void DownloadWidgetHistoryTest::statusWordsAreThoseOfTheJobFlowDesk_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("flag");
    for (int status = -1; status <= 4; ++status)
        for (int flag = -1; flag <= 3; ++flag)
            QTest::addRow("status %d, flag %d", status, flag) << status << flag;
}

void DownloadWidgetHistoryTest::statusWordsAreThoseOfTheJobFlowDesk()
{
    QFETCH(int, status);
    QFETCH(int, flag);
    auto flow = someFlow(1);
    flow.flowStatus = status;
    flow.checkFlag = flag;
    FakeServices::instance().flowPages.always({{flow}, 1});
    const auto history = makeDownloadDesk(PreProcessor);
    const auto jobFlows = makeDesk();
    const auto *here = jobTable(*history)->item(0, 6);
    const auto *there = jobTable(*jobFlows)->item(0, 6);
    QCOMPARE(here->text(), KODMS::UI::flowStatusText(status, flag).section(QLatin1Char('|'), 0, 0));
    QCOMPARE(here->text(), there->text());
    QCOMPARE(here->foreground(), there->foreground());
}

void DownloadWidgetHistoryTest::nobodyIsConcerned()
{
    const auto desk = makeDownloadDesk(PreProcessor);
    QCOMPARE(searches(), 1);
    QCOMPARE(jobTable(*desk)->rowCount(), 0);
    QVERIFY(!control(*desk, "m_TurnPage")->isVisible());
}

void DownloadWidgetHistoryTest::thirtyAreOnePageThirtyOneAreTwo_data()
{
    QTest::addColumn<int>("total");
    QTest::addColumn<bool>("bar");
    QTest::newRow("thirty") << 30 << false;
    QTest::newRow("thirty-one") << 31 << true;
}

void DownloadWidgetHistoryTest::thirtyAreOnePageThirtyOneAreTwo()
{
    QFETCH(int, total);
    answerWithFlows(total);
    const auto desk = makeDownloadDesk();
    QCOMPARE(jobTable(*desk)->rowCount(), 30);
    QTEST(control(*desk, "m_TurnPage")->isVisible(), "bar");
}

void DownloadWidgetHistoryTest::pagesAreReachedThroughTheBar()
{
    answerWithFlows(75);
    const auto desk = makeDownloadDesk(PreProcessor);
    click(*desk, "m_pPageDownPB");
    QCOMPARE(conditions().back().pageStart, std::string("30"));
    QCOMPARE(jobTable(*desk)->item(0, 0)->text(), QStringLiteral("31"));
    click(*desk, "m_pLastPagePB");
    QCOMPARE(jobTable(*desk)->rowCount(), 15);
    click(*desk, "m_pFirstPagePB");
    QCOMPARE(jobTable(*desk)->item(0, 0)->text(), QStringLiteral("1"));
    QCOMPARE(searches(), 4);
}

void DownloadWidgetHistoryTest::aShrunkenResultIsAskedForTwice()
{
    answerWithFlows(150);
    const auto desk = makeDownloadDesk(PreProcessor);
    click(*desk, "m_pLastPagePB");
    answerWithFlows(45);
    const int before = searches();
    type(*desk, QStringLiteral("x"));
    QCOMPARE(searches(), before + 2);
    auto moved = conditions(before);
    QCOMPARE(moved.back().pageStart, std::string("120"));
    moved.back().pageStart = "30";
    QCOMPARE(allFields(conditions(before + 1)), allFields(moved));
    QCOMPARE(allFields(countConditions(before + 1)), allFields(countConditions(before)));
    QCOMPARE(jobTable(*desk)->rowCount(), 15);
    QCOMPARE(jobTable(*desk)->item(0, 0)->text(), QStringLiteral("31"));
    QCOMPARE(control<QLineEdit>(*desk, "m_pGotoPageLE")->text(), QStringLiteral("2"));
}

/// Services append to the rows that they are given.
void DownloadWidgetHistoryTest::theFirstAnswerOfTwoIsForgotten()
{
    answerWithFlows(61);
    const auto desk = makeDownloadDesk(PreProcessor);
    click(*desk, "m_pLastPagePB");
    answerWithFlows(45);
    FakeServices::instance().flowPages.once({{someFlow(99)}, 45});
    click(*desk, "m_pRefreshPB");
    QCOMPARE(jobTable(*desk)->rowCount(), 15);
    QCOMPARE(jobTable(*desk)->item(0, 0)->text(), QStringLiteral("31"));
}

void DownloadWidgetHistoryTest::nothingFoundEmptiesTheTable()
{
    answerWithFlows(61);
    const auto desk = makeDownloadDesk(PreProcessor);
    answerWithFlows(0);
    click(*desk, "m_pRefreshPB");
    QCOMPARE(jobTable(*desk)->rowCount(), 0);
    QVERIFY(!control(*desk, "m_TurnPage")->isVisible());
    answerWithFlows(2);
    click(*desk, "m_pRefreshPB");
    QCOMPARE(ids(*desk), QStringLiteral("1 2"));
}

/// Other than with original files the bar is left without rows; a jump to the
/// last page of none makes room for one page only.
void DownloadWidgetHistoryTest::nothingFoundTakesTheBarsRows()
{
    answerWithFlows(3);
    const auto desk = makeDownloadDesk(PreProcessor);
    FakeServices::instance().flowPages.always({{}, 0});
    click(*desk, "m_pRefreshPB");
    QSignalSpy inserted(jobTable(*desk)->model(), SIGNAL(rowsInserted(QModelIndex, int, int)));
    control<QPushButton>(*desk, "m_pLastPagePB")->click();
    QCOMPARE(inserted.size(), 1);
    QCOMPARE(inserted.first().at(2).toInt(), 29);
    QCOMPARE(jobTable(*desk)->rowCount(), 0);
}

/// The slot's own text does not count, the search box does.
void DownloadWidgetHistoryTest::theTextIsReadFromTheSearchBox()
{
    const auto desk = makeDownloadDesk(PreProcessor);
    control<QComboBox>(*desk, "m_pFilterCMB")->setCurrentIndex(1);
    type(*desk, QStringLiteral("ab"));
    QCOMPARE(searches(), 4);
    QCOMPARE(conditions().front().value, std::string("ab"));
    QVERIFY(QMetaObject::invokeMethod(desk.get(), "on_m_pFilterLE_textEdited",
                                      Q_ARG(QString, QStringLiteral("told"))));
    QCOMPARE(conditions().front().value, std::string("ab"));
}

void DownloadWidgetHistoryTest::cellsAreNotEdited()
{
    answerWithFlows(1);
    const auto desk = makeDownloadDesk(PreProcessor);
    auto *table = jobTable(*desk);
    table->setCurrentCell(0, 12);
    QTest::keyClick(table, Qt::Key_F2);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {},
                       table->visualItemRect(table->item(0, 12)).center());
    QVERIFY(!table->isPersistentEditorOpen(table->item(0, 12)));
    QVERIFY(!table->findChild<QLineEdit *>());
    QVERIFY(table->selectionModel()->isRowSelected(0, QModelIndex()));
}

void DownloadWidgetHistoryTest::headerClicksSortThePage()
{
    FakeServices::instance().flowPages.always({{someFlow(2), someFlow(3), someFlow(1)}, 3});
    const auto desk = makeDownloadDesk(PreProcessor);
    auto *header = jobTable(*desk)->horizontalHeader();
    const QPoint jobName(header->sectionViewportPosition(1) + 10, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, jobName);
    QCOMPARE(ids(*desk), QStringLiteral("1 2 3"));
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, jobName);
    QCOMPARE(ids(*desk), QStringLiteral("3 2 1"));
}

void DownloadWidgetHistoryTest::noMenuIsOffered()
{
    const auto desk = makeDownloadDesk(PreProcessor);
    QCOMPARE(jobTable(*desk)->contextMenuPolicy(), QTableWidget().contextMenuPolicy());
}

void DownloadWidgetHistoryTest::nobodyIsToldAnything()
{
    KODMS::Fakes::MessageBoxProbe probe;
    FakeServices::instance().flowPages.always({{}, 0, false});
    const auto desk = makeDownloadDesk(PreProcessor);
    click(*desk, "m_pRefreshPB");
    QCOMPARE(probe.count(), 0);
}

KODMS_TEST_MAIN(DownloadWidgetHistoryTest, QApplication)
#include "DownloadWidgetHistoryTest.moc"
