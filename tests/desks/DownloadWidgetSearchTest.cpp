// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/ConditionLines.h"
#include "tests/desks/DownloadDesk.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace KODMS::Tests;

/// When the original-file desk searches, and what it makes of the answer.
class DownloadWidgetSearchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void everyKeystrokeSearches();
    void theComboSearches();
    void everyColumnIsFilled();
    void aBarInATextColoursItsRest();
    void thirtyAreOnePageThirtyOneAreTwo_data();
    void thirtyAreOnePageThirtyOneAreTwo();
    void pagesAreReachedThroughTheBar();
    void aShrunkenResultIsAskedForTwice();
    void theFirstAnswerOfTwoIsForgotten();
    void thePageSurvivesAnEdit();
    void nothingFoundEmptiesTheTable();
    void nothingFoundLeavesTheBarItsRows();
    void aFailedQueryWithoutACountShowsNothing();
    void aFailedQueryThatCountsIsShown();
    void refreshKeepsTheFilter_data();
    void refreshKeepsTheFilter();
    void pageTurnsKeepTheFilter();
    void rowsAreRemovedFromTheLastUp();
    void nothingIsSelectedAfterAFill();
    void nobodyIsToldAnything();
};

namespace {

QStringList ids(const QObject &desk)
{
    return columnTexts(jobTable(desk), 6);
}

QString row(const QObject &desk, int number)
{
    const auto *table = jobTable(desk);
    QStringList texts;
    for (int column = 0; column < table->columnCount(); ++column)
        texts << (table->item(number, column) ? table->item(number, column)->text()
                                              : QStringLiteral("no cell"));
    return texts.join(QLatin1Char('/'));
}

void click(const QObject &desk, const char *button)
{
    QTest::mouseClick(control(desk, button), Qt::LeftButton);
}

void type(const QObject &desk, const QString &text)
{
    QTest::keyClicks(control(desk, "m_pFilterLE"), text);
}

void choose(const QObject &desk, int item)
{
    control<QComboBox>(desk, "m_pFilterCMB")->setCurrentIndex(item);
}

KODMS::DataLib::Model::Odbpp_OrigFile_View named(int id, const char *name)
{
    auto file = someFile(id);
    file.origName = name;
    return file;
}

} // namespace

void DownloadWidgetSearchTest::everyKeystrokeSearches()
{
    const auto desk = makeDownloadDesk({Right::Admin});
    choose(*desk, 1);
    QCOMPARE(fileSearches(), 2);
    type(*desk, QStringLiteral("abc"));
    QCOMPARE(fileSearches(), 5);
    QCOMPARE(fileConditions(2).front().value, std::string("a"));
    QCOMPARE(fileConditions(3).front().value, std::string("ab"));
    QCOMPARE(fileConditions(4).front().value, std::string("abc"));
    QTest::keyClick(control(*desk, "m_pFilterLE"), Qt::Key_Backspace);
    QCOMPARE(fileConditions(5).front().value, std::string("ab"));
    QTest::keyClick(control(*desk, "m_pFilterLE"), Qt::Key_Return);
    control<QLineEdit>(*desk, "m_pFilterLE")->setText(QStringLiteral("by a program"));
    QCOMPARE(fileSearches(), 6);
}

void DownloadWidgetSearchTest::theComboSearches()
{
    const auto desk = makeDownloadDesk({Right::Admin});
    type(*desk, QStringLiteral("x"));
    auto *combo = control<QComboBox>(*desk, "m_pFilterCMB");
    QTest::keyClick(combo, Qt::Key_End);
    QCOMPARE(combo->currentIndex(), 8);
    QCOMPARE(fileSearches(), 3);
    QCOMPARE(fileConditions().front().fieldName, std::string("SuperiorCo2"));
    QCOMPARE(fileConditions().front().value, std::string("x"));
    QTest::keyClick(combo, Qt::Key_End);
    QCOMPARE(fileSearches(), 3);
}

void DownloadWidgetSearchTest::everyColumnIsFilled()
{
    auto file = someFile(23456);
    file.koName = "华强";
    file.koCode = "web";
    file.fileType = "";
    file.fileDescription = "双面";
    file.fileTips = "急单";
    file.superiorCo1 = "二级";
    file.superiorCo2 = "三级";
    file.updateTime = "u";
    file.createTime = "c";
    file.preUserRealName = "王芳";
    file.preUserId = 77;
    FakeServices::instance().origFilePages.always({{someFile(9), file, someFile(3)}, 3});
    const auto desk = makeDownloadDesk({Right::TestAdmin});
    QCOMPARE(ids(*desk),
             QStringList({QStringLiteral("9"), QStringLiteral("23456"), QStringLiteral("3")}));
    QCOMPARE(row(*desk, 1),
             QStringLiteral("file23456/华强/web/file/023456/file23456.tgz/23456/双面/急单/"
                            "guid23456/二级/三级/u/c/王芳/77"));
}

void DownloadWidgetSearchTest::aBarInATextColoursItsRest()
{
    FakeServices::instance().origFilePages.always({{named(1, "left|r")}, 1});
    const auto desk = makeDownloadDesk({Right::Admin});
    QCOMPARE(jobTable(*desk)->item(0, 0)->text(), QStringLiteral("left"));
    QCOMPARE(jobTable(*desk)->item(0, 0)->foreground().color(), QColor(Qt::red));
}

void DownloadWidgetSearchTest::thirtyAreOnePageThirtyOneAreTwo_data()
{
    QTest::addColumn<int>("total");
    QTest::addColumn<bool>("bar");
    QTest::newRow("thirty") << 30 << false;
    QTest::newRow("thirty-one") << 31 << true;
}

void DownloadWidgetSearchTest::thirtyAreOnePageThirtyOneAreTwo()
{
    QFETCH(int, total);
    answerWithFiles(total);
    const auto desk = makeDownloadDesk({Right::Admin});
    QCOMPARE(jobTable(*desk)->rowCount(), 30);
    QTEST(control(*desk, "m_TurnPage")->isVisible(), "bar");
}

void DownloadWidgetSearchTest::pagesAreReachedThroughTheBar()
{
    answerWithFiles(75);
    const auto desk = makeDownloadDesk({Right::Admin});
    click(*desk, "m_pPageDownPB");
    QCOMPARE(fileConditions().back().pageStart, std::string("30"));
    QCOMPARE(ids(*desk).first(), QStringLiteral("31"));
    click(*desk, "m_pLastPagePB");
    QCOMPARE(jobTable(*desk)->rowCount(), 15);
    QCOMPARE(ids(*desk).last(), QStringLiteral("75"));
    click(*desk, "m_pFirstPagePB");
    QCOMPARE(ids(*desk).first(), QStringLiteral("1"));
    QCOMPARE(fileSearches(), 4);
    QVERIFY(QMetaObject::invokeMethod(desk.get(), "on_m_TurnPage_currentPageChanged"));
    QCOMPARE(fileSearches(), 5);
}

void DownloadWidgetSearchTest::aShrunkenResultIsAskedForTwice()
{
    answerWithFiles(150);
    const auto desk = makeDownloadDesk({Right::Admin});
    click(*desk, "m_pLastPagePB");
    answerWithFiles(45);
    const int before = fileSearches();
    type(*desk, QStringLiteral("x"));
    QCOMPARE(fileSearches(), before + 2);
    QCOMPARE(fileConditions(before).back().pageStart, std::string("120"));
    auto moved = fileConditions(before);
    moved.back().pageStart = "30";
    QCOMPARE(allFields(fileConditions(before + 1)), allFields(moved));
    QCOMPARE(allFields(fileCountConditions(before + 1)), allFields(fileCountConditions(before)));
    QCOMPARE(ids(*desk).size(), 15);
    QCOMPARE(ids(*desk).first(), QStringLiteral("31"));
    QCOMPARE(control<QLineEdit>(*desk, "m_pGotoPageLE")->text(), QStringLiteral("2"));
    QCOMPARE(control<QLabel>(*desk, "m_pTotalLabel")->text(), QStringLiteral("/ 2"));
}

/// Services append to the rows that they are given.
void DownloadWidgetSearchTest::theFirstAnswerOfTwoIsForgotten()
{
    answerWithFiles(61);
    const auto desk = makeDownloadDesk({Right::Admin});
    click(*desk, "m_pLastPagePB");
    answerWithFiles(45);
    FakeServices::instance().origFilePages.once({{someFile(99)}, 45});
    click(*desk, "m_pRefreshPB");
    QCOMPARE(ids(*desk).size(), 15);
    QCOMPARE(ids(*desk).first(), QStringLiteral("31"));
}

void DownloadWidgetSearchTest::thePageSurvivesAnEdit()
{
    answerWithFiles(75);
    const auto desk = makeDownloadDesk({Right::Admin});
    click(*desk, "m_pPageDownPB");
    type(*desk, QStringLiteral("x"));
    QCOMPARE(fileConditions().back().pageStart, std::string("30"));
    QCOMPARE(control<QLineEdit>(*desk, "m_pGotoPageLE")->text(), QStringLiteral("2"));
}

void DownloadWidgetSearchTest::nothingFoundEmptiesTheTable()
{
    answerWithFiles(61);
    const auto desk = makeDownloadDesk({Right::Admin});
    click(*desk, "m_pPageDownPB");
    answerWithFiles(0);
    type(*desk, QStringLiteral("x"));
    QCOMPARE(jobTable(*desk)->rowCount(), 0);
    QVERIFY(!control(*desk, "m_TurnPage")->isVisible());
    QVERIFY(!jobTable(*desk)->signalsBlocked());
    answerWithFiles(61);
    type(*desk, QStringLiteral("y"));
    QCOMPARE(ids(*desk).first(), QStringLiteral("31"));
    QVERIFY(control(*desk, "m_TurnPage")->isVisible());
}

/// Told that there is nothing, the bar keeps the rows of the last page that had
/// any; a jump to the last page of none makes room for them and a page more.
void DownloadWidgetSearchTest::nothingFoundLeavesTheBarItsRows()
{
    answerWithFiles(3);
    const auto desk = makeDownloadDesk({Right::Admin});
    FakeServices::instance().origFilePages.always({{}, 0});
    click(*desk, "m_pRefreshPB");
    QSignalSpy inserted(jobTable(*desk)->model(), SIGNAL(rowsInserted(QModelIndex, int, int)));
    control<QPushButton>(*desk, "m_pLastPagePB")->click();
    QCOMPARE(inserted.size(), 1);
    QCOMPARE(inserted.first().at(2).toInt(), 32);
    QCOMPARE(jobTable(*desk)->rowCount(), 0);
}

void DownloadWidgetSearchTest::aFailedQueryWithoutACountShowsNothing()
{
    FakeServices::instance().origFilePages.always({{someFile(1)}, 0, false});
    const auto desk = makeDownloadDesk({Right::Admin});
    QCOMPARE(jobTable(*desk)->rowCount(), 0);
    QVERIFY(!control(*desk, "m_TurnPage")->isVisible());
}

void DownloadWidgetSearchTest::aFailedQueryThatCountsIsShown()
{
    FakeServices::instance().origFilePages.always({{someFile(1)}, 1, false});
    const auto desk = makeDownloadDesk({Right::Admin});
    QCOMPARE(ids(*desk), QStringList({QStringLiteral("1")}));
}

void DownloadWidgetSearchTest::refreshKeepsTheFilter_data()
{
    QTest::addColumn<bool>("byButton");
    QTest::newRow("the button") << true;
    QTest::newRow("another window") << false;
}

void DownloadWidgetSearchTest::refreshKeepsTheFilter()
{
    QFETCH(bool, byButton);
    answerWithFiles(3);
    const auto desk = makeDownloadDesk({Right::Admin});
    choose(*desk, 2);
    type(*desk, QStringLiteral("a1b"));
    const auto before = allFields(fileConditions());
    const int count = fileSearches();
    if (byButton)
        click(*desk, "m_pRefreshPB");
    else
        FakeServices::instance().raiseRefreshOrigFileTable();
    QCOMPARE(fileSearches(), count + 1);
    QCOMPARE(allFields(fileConditions()), before);
    QCOMPARE(control<QLineEdit>(*desk, "m_pFilterLE")->text(), QStringLiteral("a1b"));
    QCOMPARE(jobTable(*desk)->rowCount(), 3);
}

void DownloadWidgetSearchTest::pageTurnsKeepTheFilter()
{
    answerWithFiles(75);
    const auto desk = makeDownloadDesk({Right::Admin});
    choose(*desk, 2);
    type(*desk, QStringLiteral("a1b"));
    auto before = fileConditions();
    click(*desk, "m_pPageDownPB");
    before.back().pageStart = "30";
    QCOMPARE(allFields(fileConditions()), allFields(before));
}

void DownloadWidgetSearchTest::rowsAreRemovedFromTheLastUp()
{
    answerWithFiles(3);
    const auto desk = makeDownloadDesk({Right::Admin});
    QStringList removed;
    connect(jobTable(*desk)->model(), &QAbstractItemModel::rowsRemoved, this,
            [&](const QModelIndex &, int first, int last) {
                removed << QStringLiteral("%1-%2").arg(first).arg(last);
            });
    answerWithFiles(0);
    click(*desk, "m_pRefreshPB");
    QCOMPARE(removed.join(QLatin1Char(' ')), QStringLiteral("2-2 1-1 0-0"));
}

void DownloadWidgetSearchTest::nothingIsSelectedAfterAFill()
{
    answerWithFiles(3);
    const auto desk = makeDownloadDesk({Right::Admin});
    QVERIFY(jobTable(*desk)->selectedItems().isEmpty());
    jobTable(*desk)->selectRow(1);
    type(*desk, QStringLiteral("x"));
    QVERIFY(jobTable(*desk)->selectedItems().isEmpty());
}

void DownloadWidgetSearchTest::nobodyIsToldAnything()
{
    KODMS::Fakes::MessageBoxProbe probe;
    FakeServices::instance().origFilePages.always({{}, 0, false});
    const auto desk = makeDownloadDesk({Right::Admin});
    type(*desk, QStringLiteral("x"));
    click(*desk, "m_pRefreshPB");
    QCOMPARE(probe.count(), 0);
}

KODMS_TEST_MAIN(DownloadWidgetSearchTest, QApplication)
#include "DownloadWidgetSearchTest.moc"
