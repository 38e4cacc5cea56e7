// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/BarWindow.h"
#include "tests/desks/ConditionLines.h"
#include "tests/desks/LayoutLines.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

#include <stdexcept>
#include <type_traits>

using namespace KODMS::Tests;
using KODMS::DataLib::Model::DB_Search;
using KODMS::UI::Temp_Widget;

namespace {

template <auto operation, typename Type>
constexpr bool is = std::is_same_v<decltype(operation), Type Bar::*>;

using Conditions = std::vector<DB_Search>;
static_assert(is<&Bar::setData, void(Rows, int, QString)>);
static_assert(is<&Bar::setSearchPage, void(Conditions &, bool)>);
static_assert(is<&Bar::clampPage, bool(int)>);
static_assert(std::is_constructible_v<Bar, Rows, QTableWidget *, QWidget *>);
static_assert(std::is_base_of_v<Temp_Widget, Bar> && std::has_virtual_destructor_v<Bar>);
static_assert(Bar::PageSize == 30);

} // namespace

/// What the page bar is built of, how it fills the table and asks for a page.
class TurnPageFillTest : public QObject, private BarWindow {
    Q_OBJECT

private Q_SLOTS:

    void init() { open(); }

    void cleanup() { close(); }

    void theBarReadsFromLeftToRight();
    void thePageFieldTakesOnlyDigits();
    void thePageSlotsAreThoseOfTheBase();
    void theBarStartsOnPageOne();
    void theNumberOfPagesFollowsTheCount_data();
    void theNumberOfPagesFollowsTheCount();
    void noRowsInAllPagesLeaveTheTableAsItIs();
    void fillingPutsEveryCellInPlace();
    void cellsBeyondTheTablesColumnsAreLeftOut();
    void fillingAgainReplacesTheRows();
    void aCellIsSplitAtItsBars_data();
    void aCellIsSplitAtItsBars();
    void theRowOfTheSelectKeyIsSelected_data();
    void theRowOfTheSelectKeyIsSelected();
    void theHeldRowsAreACopy();
    void thePageWindowGoesIntoTheLastCondition();
    void aRestartGoesBackToPageOne();
    void anEmptyConditionListIsOutOfRange();
    void clampingMovesOnlyBackwards_data();
    void clampingMovesOnlyBackwards();
    void clampingToNoRowsMovesToPageZero();
    void clampingTouchesNeitherFieldNorSignal();
    void theTableIsNotOwned();
};

void TurnPageFillTest::theBarReadsFromLeftToRight()
{
    QCOMPARE(
        layoutLines(m_bar->layout()),
        QStringList({QStringLiteral("QHBoxLayout"), QStringLiteral(" spacer 3x1 Expanding Minimum"),
                     QStringLiteral(" m_pFirstPagePB"), QStringLiteral(" m_pPageUpPB"),
                     QStringLiteral(" m_pGotoPageLE"), QStringLiteral(" m_pTotalLabel"),
                     QStringLiteral(" m_pPageDownPB"), QStringLiteral(" m_pLastPagePB"),
                     QStringLiteral(" spacer 3x1 Expanding Minimum")}));
    QCOMPARE(button("m_pFirstPagePB")->text(), QStringLiteral("第一页"));
    QCOMPARE(button("m_pPageUpPB")->text(), QStringLiteral("上一页"));
    QCOMPARE(button("m_pPageDownPB")->text(), QStringLiteral("下一页"));
    QCOMPARE(button("m_pLastPagePB")->text(), QStringLiteral("最后一页"));
    QStringList created;
    const auto controls = m_bar->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget *control : controls)
        created << control->objectName();
    QCOMPARE(created,
             QStringList({QStringLiteral("m_pFirstPagePB"), QStringLiteral("m_pPageUpPB"),
                          QStringLiteral("m_pGotoPageLE"), QStringLiteral("m_pTotalLabel"),
                          QStringLiteral("m_pPageDownPB"), QStringLiteral("m_pLastPagePB")}));
}

void TurnPageFillTest::thePageFieldTakesOnlyDigits()
{
    QCOMPARE(field()->maximumWidth(), 50);
    QCOMPARE(field()->minimumWidth(), 0);
    const auto *validator = qobject_cast<const QRegExpValidator *>(field()->validator());
    QVERIFY(validator);
    QCOMPARE(validator->regExp().pattern(), QStringLiteral("[0-9]{1,20}$"));
    QCOMPARE(validator->regExp().caseSensitivity(), Qt::CaseSensitive);
    m_bar->setData(someRows(30), 150, QString());
    field()->clear();
    field()->setFocus();
    QTest::keyClicks(field(), QStringLiteral("-1a2 .3"));
    QCOMPARE(field()->text(), QStringLiteral("123"));
    QTest::keyClicks(field(), QStringLiteral("456789012345678901234567890"));
    QCOMPARE(field()->text().size(), 20);
}

void TurnPageFillTest::thePageSlotsAreThoseOfTheBase()
{
    const QMetaObject &meta = Temp_Widget::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        methods << QString::fromLatin1(meta.method(index).methodSignature());
    QCOMPARE(methods, QStringList({QStringLiteral("currentPageChanged()"),
                                   QStringLiteral("on_m_pFirstPagePB_clicked()"),
                                   QStringLiteral("on_m_pPageUpPB_clicked()"),
                                   QStringLiteral("on_m_pPageDownPB_clicked()"),
                                   QStringLiteral("on_m_pLastPagePB_clicked()"),
                                   QStringLiteral("on_m_pGotoPageLE_editingFinished()")}));
    QCOMPARE(m_bar->metaObject(), &meta);
}

void TurnPageFillTest::theBarStartsOnPageOne()
{
    QCOMPARE(field()->text(), QStringLiteral("1"));
    QCOMPARE(currentPage(), 1);
    QCOMPARE(m_bar->parentWidget(), m_window);
}

void TurnPageFillTest::theNumberOfPagesFollowsTheCount_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("label");
    QTest::addColumn<bool>("shown");
    QTest::newRow("nothing found") << 0 << QStringLiteral("/ 0") << false;
    QTest::newRow("one row") << 1 << QStringLiteral("/ 1") << false;
    QTest::newRow("29 rows") << 29 << QStringLiteral("/ 1") << false;
    QTest::newRow("30 rows, one full page") << 30 << QStringLiteral("/ 1") << false;
    QTest::newRow("31 rows") << 31 << QStringLiteral("/ 2") << true;
    QTest::newRow("60 rows, two full pages") << 60 << QStringLiteral("/ 2") << true;
    QTest::newRow("61 rows") << 61 << QStringLiteral("/ 3") << true;
    QTest::newRow("a million rows") << 1000000 << QStringLiteral("/ 33334") << true;
}

void TurnPageFillTest::theNumberOfPagesFollowsTheCount()
{
    QFETCH(int, count);
    m_bar->setData(someRows(qMin(count, 30)), count, QString());
    QTEST(total(), "label");
    QTEST(m_bar->isVisible(), "shown");
    QCOMPARE(field()->text(), QStringLiteral("1"));
}

void TurnPageFillTest::noRowsInAllPagesLeaveTheTableAsItIs()
{
    m_bar->setData(someRows(3), 31, QString());
    m_bar->setData(Rows(), 0, QString());
    QCOMPARE(m_table->rowCount(), 3);
    QCOMPARE(m_table->item(2, 1)->text(), QStringLiteral("name2"));
    QVERIFY(!m_bar->isVisible());
    QCOMPARE(total(), QStringLiteral("/ 0"));
}

void TurnPageFillTest::fillingPutsEveryCellInPlace()
{
    m_bar->setData(someRows(30), 30, QString());
    QCOMPARE(m_table->rowCount(), 30);
    for (int row = 0; row < 30; ++row) {
        QCOMPARE(m_table->item(row, 0)->text(), QStringLiteral("id%1").arg(row));
        QCOMPARE(m_table->item(row, 1)->text(), QStringLiteral("name%1").arg(row));
    }
    QVERIFY(m_table->selectedItems().isEmpty());
}

/// Without care the table would put them into the row below.
void TurnPageFillTest::cellsBeyondTheTablesColumnsAreLeftOut()
{
    m_table->setColumnCount(1);
    QStringList written;
    connect(m_table, &QTableWidget::cellChanged, this,
            [&](int row, int column) { written << QStringLiteral("%1/%2").arg(row).arg(column); });
    m_bar->setData(someRows(2), 2, QStringLiteral("id1"));
    QCOMPARE(written, QStringList({QStringLiteral("0/0"), QStringLiteral("1/0")}));
    QCOMPARE(m_table->item(1, 0)->text(), QStringLiteral("id1"));
    QCOMPARE(m_table->currentRow(), 1);
}

void TurnPageFillTest::fillingAgainReplacesTheRows()
{
    m_bar->setData(someRows(30), 31, QString());
    m_bar->setData({{QStringLiteral("x"), QStringLiteral("y|r")}}, 1, QString());
    QCOMPARE(m_table->rowCount(), 1);
    QCOMPARE(m_table->item(0, 0)->text(), QStringLiteral("x"));
    QCOMPARE(m_table->item(0, 1)->text(), QStringLiteral("y"));
}

void TurnPageFillTest::aCellIsSplitAtItsBars_data()
{
    QTest::addColumn<QString>("cell");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QBrush>("colour");
    const QBrush red{QColor(Qt::red)};
    const QBrush none;
    QTest::newRow("text and code") << "abc|r"
                                   << "abc" << red;
    QTest::newRow("text alone") << "abc"
                                << "abc" << none;
    QTest::newRow("ends in a bar") << "abc|"
                                   << "abc" << none;
    QTest::newRow("two bars use the second piece") << "abc|r|dg"
                                                   << "abc" << red;
    QTest::newRow("empty text, code") << "|r"
                                      << "" << red;
    QTest::newRow("empty second piece, third ignored") << "abc||r"
                                                       << "abc" << none;
    QTest::newRow("code in capitals") << "abc|R"
                                      << "abc" << none;
    QTest::newRow("nothing at all") << ""
                                    << "" << none;
}

void TurnPageFillTest::aCellIsSplitAtItsBars()
{
    QFETCH(QString, cell);
    m_bar->setData({{cell}}, 1, QString());
    QTEST(m_table->item(0, 0)->text(), "text");
    QTEST(m_table->item(0, 0)->foreground(), "colour");
}

void TurnPageFillTest::theRowOfTheSelectKeyIsSelected_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("row"); // -1: none
    QTest::newRow("key in the first column") << "id1" << 1;
    QTest::newRow("key in another column") << "name2" << 2;
    QTest::newRow("coloured cell, by its text") << "done" << 3;
    QTest::newRow("whole cell string is no key") << "done|dg" << -1;
    QTest::newRow("part of a text is no key") << "id" << -1;
    QTest::newRow("empty key selects no empty cell") << "" << -1;
    QTest::newRow("unknown key") << "id9" << -1;
}

void TurnPageFillTest::theRowOfTheSelectKeyIsSelected()
{
    QFETCH(QString, key);
    QFETCH(int, row);
    Rows rows = someRows(3);
    rows.append({QString(), QStringLiteral("done|dg")});
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_bar->setData(rows, 4, key);
    QList<int> selected;
    const auto indexes = m_table->selectionModel()->selectedRows();
    for (const QModelIndex &index : indexes)
        selected << index.row();
    QCOMPARE(selected, row == -1 ? QList<int>() : QList<int>({row}));
}

void TurnPageFillTest::theHeldRowsAreACopy()
{
    Rows rows = someRows(70);
    m_bar->setData(rows, 90, QString());
    rows.clear();
    // The last page takes its first row count from the rows held: 70 - 30 * 3 + 30.
    click("m_pLastPagePB");
    QCOMPARE(m_table->rowCount(), 10);
}

void TurnPageFillTest::thePageWindowGoesIntoTheLastCondition()
{
    showPage(3);
    std::vector<DB_Search> list{Expected("A", "1"), Expected("B", "2").fuzzy().sorted("T")};
    m_bar->setSearchPage(list, false);
    QCOMPARE(allFields(list),
             allFields({Expected("A", "1"), Expected("B", "2").fuzzy().sorted("T").page("60")}));
    QCOMPARE(field()->text(), QStringLiteral("3"));
}

void TurnPageFillTest::aRestartGoesBackToPageOne()
{
    showPage(3);
    QSignalSpy changed(m_bar, SIGNAL(currentPageChanged()));
    std::vector<DB_Search> list{Expected("A", "1")};
    m_bar->setSearchPage(list, true);
    QCOMPARE(allFields(list), allFields({Expected("A", "1").page("0")}));
    QCOMPARE(field()->text(), QStringLiteral("1"));
    QCOMPARE(currentPage(), 1);
    QCOMPARE(changed.count(), 0);
}

void TurnPageFillTest::anEmptyConditionListIsOutOfRange()
{
    std::vector<DB_Search> list;
    QVERIFY_EXCEPTION_THROWN(m_bar->setSearchPage(list, false), std::out_of_range);
    QVERIFY_EXCEPTION_THROWN(m_bar->setSearchPage(list, true), std::out_of_range);
}

void TurnPageFillTest::clampingMovesOnlyBackwards_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("moved");
    QTest::addColumn<int>("page");
    QTest::newRow("still five pages") << 150 << false << 5;
    QTest::newRow("one row on page five") << 121 << false << 5;
    QTest::newRow("exactly four pages") << 120 << true << 4;
    QTest::newRow("two pages") << 31 << true << 2;
    QTest::newRow("one page") << 30 << true << 1;
    QTest::newRow("more pages than before") << 1000 << false << 5;
}

void TurnPageFillTest::clampingMovesOnlyBackwards()
{
    QFETCH(int, count);
    showPage(5);
    QTEST(m_bar->clampPage(count), "moved");
    QTEST(currentPage(), "page");
}

void TurnPageFillTest::clampingToNoRowsMovesToPageZero()
{
    m_bar->setData(someRows(30), 150, QString());
    QVERIFY(m_bar->clampPage(0));
    std::vector<DB_Search> list{Expected("A", "1")};
    m_bar->setSearchPage(list, false);
    QCOMPARE(list.back().pageStart, std::string("-30"));
    QVERIFY(!m_bar->clampPage(0));
}

void TurnPageFillTest::clampingTouchesNeitherFieldNorSignal()
{
    showPage(5);
    QSignalSpy changed(m_bar, SIGNAL(currentPageChanged()));
    QVERIFY(m_bar->clampPage(31));
    QCOMPARE(field()->text(), QStringLiteral("5"));
    QCOMPARE(total(), QStringLiteral("/ 5"));
    QCOMPARE(changed.count(), 0);
    m_bar->setData(someRows(1), 31, QString());
    QCOMPARE(field()->text(), QStringLiteral("2"));
    QCOMPARE(total(), QStringLiteral("/ 2"));
}

void TurnPageFillTest::theTableIsNotOwned()
{
    m_bar->setData(someRows(3), 31, QString());
    delete m_bar;
    QCOMPARE(m_table->item(2, 0)->text(), QStringLiteral("id2"));
}

KODMS_TEST_MAIN(TurnPageFillTest, QApplication)
#include "TurnPageFillTest.moc"
