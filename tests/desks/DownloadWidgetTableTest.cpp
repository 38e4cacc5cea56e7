// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/DownloadDesk.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>

using namespace KODMS::Tests;

/// The two shapes of the original-file desk's table, who gets which rows in which,
/// and the order of a page.
class DownloadWidgetTableTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void theTableOfOriginalFiles_data();
    void theTableOfOriginalFiles();
    void whatTheFirstPageShows_data();
    void whatTheFirstPageShows();
    void historyInTheTableOfOriginalFiles();
    void theFirstSearchAfterwardsShowsOriginalFiles();
    void ordinaryUsersGetFilesAfterTheFirstEdit();
    void preProcessorsAlwaysGetTheHistory_data();
    void preProcessorsAlwaysGetTheHistory();
    void headerClicksSortThePage();
    void anotherHeaderStartsAscendingAgain();
    void theOrderOfTheNextClickSurvivesARefill();
    void sortingIsByTextAndAsksNothing();
};

namespace {

using Rights = QVector<Right>;

QList<int> visibleColumns(const QTableWidget *table)
{
    QList<int> visible;
    for (int column = 0; column < table->columnCount(); ++column)
        if (!table->isColumnHidden(column))
            visible << column;
    return visible;
}

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

void clickHeader(const QObject &desk, int column)
{
    auto *header = jobTable(desk)->horizontalHeader();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      {header->sectionViewportPosition(column) + 10, header->height() / 2});
}

KODMS::DataLib::Model::Odbpp_OrigFile_View named(int id, const char *name)
{
    auto file = someFile(id);
    file.origName = name;
    return file;
}

} // namespace

void DownloadWidgetTableTest::theTableOfOriginalFiles_data()
{
    QTest::addColumn<Rights>("rights");
    QTest::addColumn<QList<int>>("visible");
    const QList<int> withCustomers = {0, 1, 2, 3, 4, 8, 10, 11, 12, 13, 14};
    const QList<int> withoutCustomers = {0, 2, 3, 4, 8, 12, 13, 14};
    const auto all =
        combinations({Right::ShowCompanyName, Right::Admin, Right::TestAdmin, Right::PreProcess});
    for (const Rights &rights : all)
        if (seesOrigFiles(rights))
            QTest::newRow(qPrintable(rightNames(rights)))
                << rights
                << (rights.contains(Right::ShowCompanyName) || rights.contains(Right::Admin)
                        ? withCustomers
                        : withoutCustomers);
}

void DownloadWidgetTableTest::theTableOfOriginalFiles()
{
    QFETCH(Rights, rights);
    const auto desk = makeDownloadDesk(rights);
    const auto *table = jobTable(*desk);
    QCOMPARE(table->columnCount(), 16);
    QStringList headers;
    for (int column = 0; column < 16; ++column)
        headers << table->horizontalHeaderItem(column)->text();
    QCOMPARE(headers.join(QLatin1Char('/')),
             QStringLiteral("原料号名/客户简称/客户代号/文件类型/流水号/UUID/ID/文件描述/来源备注/"
                            "FlowGUID/客户二级/客户三级/更新时间/创建时间/前处理人/前处理人ID"));
    QTEST(visibleColumns(table), "visible");
    QCOMPARE(table->selectionMode(), QAbstractItemView::ExtendedSelection);
    QCOMPARE(table->selectionBehavior(), QTableWidget().selectionBehavior());
    QCOMPARE(table->editTriggers(), QTableWidget().editTriggers());
    QCOMPARE(table->contextMenuPolicy(), Qt::CustomContextMenu);
    QVERIFY(!table->isSortingEnabled());
    QCOMPARE(table->columnWidth(0), table->horizontalHeader()->defaultSectionSize());
}

void DownloadWidgetTableTest::whatTheFirstPageShows_data()
{
    QTest::addColumn<Rights>("rights");
    QTest::addColumn<bool>("files");
    const auto all = combinations(
        {Right::ShowCompanyName, Right::Admin, Right::TestAdmin, Right::OrigFileUpdate});
    for (const Rights &rights : all)
        QTest::newRow(qPrintable(rightNames(rights)))
            << rights << (rights.contains(Right::Admin) || rights.contains(Right::TestAdmin));
}

void DownloadWidgetTableTest::whatTheFirstPageShows()
{
    QFETCH(Rights, rights);
    QFETCH(bool, files);
    const auto desk = makeDownloadDesk(rights);
    QCOMPARE(fileSearches(), files ? 1 : 0);
    QCOMPARE(searches(), files ? 0 : 1);
}

/// A user whose only privilege is to see the customers' names.
void DownloadWidgetTableTest::historyInTheTableOfOriginalFiles()
{
    answerWithFlows(2);
    const auto desk = makeDownloadDesk({Right::ShowCompanyName});
    QCOMPARE(jobTable(*desk)->columnCount(), 16);
    QCOMPARE(jobTable(*desk)->rowCount(), 2);
    const QString second = QStringLiteral("2/A1B100002/board//0/0/待前处理//guid2///0/board//0/");
    QCOMPARE(row(*desk, 0), QString(second).replace(QLatin1Char('2'), QLatin1Char('1')));
    QCOMPARE(row(*desk, 1), second);
}

void DownloadWidgetTableTest::theFirstSearchAfterwardsShowsOriginalFiles()
{
    answerWithFlows(2);
    answerWithFiles(3);
    const auto desk = makeDownloadDesk({Right::ShowCompanyName});
    QCOMPARE(jobTable(*desk)->rowCount(), 2);
    FakeServices::instance().raiseRefreshOrigFileTable();
    QCOMPARE(fileSearches(), 1);
    QCOMPARE(ids(*desk),
             QStringList({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}));
}

/// Sixteen cells in a table of eighteen columns, whose headers stay.
void DownloadWidgetTableTest::ordinaryUsersGetFilesAfterTheFirstEdit()
{
    answerWithFlows(2);
    answerWithFiles(1);
    const auto desk = makeDownloadDesk();
    QCOMPARE(row(*desk, 0),
             QStringLiteral("1/A1B100001/board//0/0/待前处理//guid1///0/board//0///0"));
    type(*desk, QStringLiteral("b"));
    QCOMPARE(jobTable(*desk)->rowCount(), 1);
    QCOMPARE(row(*desk, 0),
             QStringLiteral("board1//A1B/tgz/000001/file1.tgz/1///guid1//////0/no cell/no cell"));
    QCOMPARE(jobTable(*desk)->horizontalHeaderItem(17)->text(), QStringLiteral("批号"));
    click(*desk, "m_pRefreshPB");
    QCOMPARE(fileSearches(), 2);
    QCOMPARE(searches(), 1);
}

void DownloadWidgetTableTest::preProcessorsAlwaysGetTheHistory_data()
{
    QTest::addColumn<Rights>("rights");
    const auto all = combinations({Right::ShowCompanyName, Right::Admin, Right::TestAdmin});
    for (const Rights &rights : all)
        QTest::newRow(qPrintable(rightNames(rights + Rights({Right::PreProcess}))))
            << rights + Rights({Right::PreProcess});
}

void DownloadWidgetTableTest::preProcessorsAlwaysGetTheHistory()
{
    QFETCH(Rights, rights);
    answerWithFlows(2);
    answerWithFiles(1);
    const auto desk = makeDownloadDesk(rights);
    QCOMPARE(searches(), 1);
    type(*desk, QStringLiteral("b"));
    choose(*desk, 1);
    click(*desk, "m_pRefreshPB");
    QCOMPARE(searches(), 4);
    QCOMPARE(fileSearches(), 0);
    QCOMPARE(jobTable(*desk)->rowCount(), 2);
    QCOMPARE(jobTable(*desk)->columnCount(), seesOrigFiles(rights) ? 16 : 18);
    QCOMPARE(jobTable(*desk)->item(0, 1)->text(), QStringLiteral("A1B100001"));
}

void DownloadWidgetTableTest::headerClicksSortThePage()
{
    FakeServices::instance().origFilePages.always(
        {{named(1, "b"), named(2, "a"), named(3, "c")}, 3});
    const auto desk = makeDownloadDesk({Right::Admin});
    clickHeader(*desk, 0);
    QCOMPARE(ids(*desk).join(QLatin1Char(' ')), QStringLiteral("2 1 3"));
    clickHeader(*desk, 0);
    QCOMPARE(ids(*desk).join(QLatin1Char(' ')), QStringLiteral("3 1 2"));
    clickHeader(*desk, 0);
    QCOMPARE(ids(*desk).join(QLatin1Char(' ')), QStringLiteral("2 1 3"));
}

void DownloadWidgetTableTest::anotherHeaderStartsAscendingAgain()
{
    FakeServices::instance().origFilePages.always(
        {{named(1, "b"), named(2, "a"), named(3, "c")}, 3});
    const auto desk = makeDownloadDesk({Right::Admin});
    clickHeader(*desk, 0);
    clickHeader(*desk, 4); // when the next click on the first would turn the order
    QCOMPARE(ids(*desk).join(QLatin1Char(' ')), QStringLiteral("1 2 3"));
    clickHeader(*desk, 4);
    QCOMPARE(ids(*desk).join(QLatin1Char(' ')), QStringLiteral("3 2 1"));
    clickHeader(*desk, 0);
    clickHeader(*desk, 0);
    clickHeader(*desk, 4); // after two clicks as well
    QCOMPARE(ids(*desk).join(QLatin1Char(' ')), QStringLiteral("1 2 3"));
    clickHeader(*desk, 0);
    QCOMPARE(ids(*desk).join(QLatin1Char(' ')), QStringLiteral("2 1 3"));
}

/// A refill shows the order of the query, and the next click goes on turning.
void DownloadWidgetTableTest::theOrderOfTheNextClickSurvivesARefill()
{
    FakeServices::instance().origFilePages.always(
        {{named(1, "b"), named(2, "a"), named(3, "c")}, 3});
    const auto desk = makeDownloadDesk({Right::Admin});
    clickHeader(*desk, 0);
    click(*desk, "m_pRefreshPB");
    QCOMPARE(ids(*desk).join(QLatin1Char(' ')), QStringLiteral("1 2 3"));
    clickHeader(*desk, 0);
    QCOMPARE(ids(*desk).join(QLatin1Char(' ')), QStringLiteral("3 1 2"));
}

void DownloadWidgetTableTest::sortingIsByTextAndAsksNothing()
{
    FakeServices::instance().origFilePages.always(
        {{named(1, "10"), named(2, "9"), named(3, "1")}, 3});
    const auto desk = makeDownloadDesk({Right::Admin});
    const int before = fileSearches();
    clickHeader(*desk, 0);
    QCOMPARE(columnTexts(jobTable(*desk), 0).join(QLatin1Char(' ')), QStringLiteral("1 10 9"));
    QCOMPARE(fileSearches(), before);
}

KODMS_TEST_MAIN(DownloadWidgetTableTest, QApplication)
#include "DownloadWidgetTableTest.moc"
