// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/TableCopy.h"

#include "tests/support/TestMain.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QMenu>
#include <QTableWidget>
#include <QTest>

using namespace KODMS::UI;

/// What the copy actions put on the clipboard, character by character.
class TableCopyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { delete m_table; }

    void selectedCells_data();
    void selectedCells();
    void hiddenCellsAreNotCopiedEvenWhenSelected();
    void everySelectedCellMayBeHidden();
    void visibleCells();
    void visibleCellsLeaveHiddenColumnsOut();
    void visibleCellsWithoutARowInTheMiddle();
    void visibleCellsOfNothingVisible();
    void currentColumn();
    void currentColumnMayBeHidden();
    void withoutACurrentColumnEveryRowIsALine();
    void currentRow();
    void currentRowLeavesHiddenColumnsOut();
    void withoutACurrentRowNothingIsCopied();
    void anEmptyTable();
    void textsAreTakenAsTheyStand();
    void theTableOrderOfTheMomentCounts();
    void theClipboardIsReplaced();
    void nothingReplacesTheClipboardToo();
    void theCopyMenu();
    void theHeaderMenu();

private:
    /// Cells by row and column, "12 13" being columns 2 and 3 of row 1.
    void select(const QString &cells)
    {
        const QStringList list = cells.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        for (const QString &cell : list)
            m_table->item(cell.at(0).digitValue() - 1, cell.at(1).digitValue() - 1)
                ->setSelected(true);
    }

    QTableWidget *m_table = nullptr;
};

/// Three rows of the columns A to C: A1 B1 C1 ...
void TableCopyTest::init()
{
    m_table = new QTableWidget(3, 3);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            m_table->setItem(
                row, column,
                new QTableWidgetItem(
                    QStringLiteral("%1%2").arg(QLatin1Char(char('A' + column))).arg(row + 1)));
}

void TableCopyTest::selectedCells_data()
{
    QTest::addColumn<QString>("cells");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << ""
                          << "\n";
    QTest::newRow("the first cell") << "11"
                                    << "A1\n";
    QTest::newRow("two cells of the second row") << "22 23"
                                                 << "\nB2\tC2\n";
    QTest::newRow("one cell of the last row") << "33"
                                              << "\nC3\n";
    QTest::newRow("a row left out in the middle") << "11 31"
                                                  << "A1\nA3\n";
    QTest::newRow("cells apart in one row") << "11 13"
                                            << "A1\tC1\n";
    QTest::newRow("a column") << "12 22 32"
                              << "B1\nB2\nB3\n";
    QTest::newRow("a corner") << "12 13 22 23"
                              << "B1\tC1\nB2\tC2\n";
    QTest::newRow("everything") << "11 12 13 21 22 23 31 32 33"
                                << "A1\tB1\tC1\nA2\tB2\tC2\nA3\tB3\tC3\n";
}

void TableCopyTest::selectedCells()
{
    QFETCH(QString, cells);
    select(cells);
    QTEST(selectedCellsText(m_table), "text");
}

void TableCopyTest::hiddenCellsAreNotCopiedEvenWhenSelected()
{
    select(QStringLiteral("11 12 13"));
    m_table->setColumnHidden(1, true);
    QVERIFY(m_table->item(0, 1)->isSelected());
    QCOMPARE(selectedCellsText(m_table), QStringLiteral("A1\tC1\n"));
}

void TableCopyTest::everySelectedCellMayBeHidden()
{
    select(QStringLiteral("12 22"));
    m_table->setColumnHidden(1, true);
    QCOMPARE(selectedCellsText(m_table), QStringLiteral("\n"));
}

void TableCopyTest::visibleCells()
{
    QCOMPARE(visibleCellsText(m_table), QStringLiteral("A1\tB1\tC1\nA2\tB2\tC2\nA3\tB3\tC3\n"));
}

void TableCopyTest::visibleCellsLeaveHiddenColumnsOut()
{
    m_table->setColumnHidden(2, true);
    delete m_table->takeItem(1, 1);
    QCOMPARE(visibleCellsText(m_table), QStringLiteral("A1\tB1\nA2\nA3\tB3\n"));
}

/// A row without cells takes the line feed of the row before and gives it back.
void TableCopyTest::visibleCellsWithoutARowInTheMiddle()
{
    for (int column = 0; column < 3; ++column)
        delete m_table->takeItem(1, column);
    QCOMPARE(visibleCellsText(m_table), QStringLiteral("A1\tB1\tC1\nA3\tB3\tC3\n"));
}

void TableCopyTest::visibleCellsOfNothingVisible()
{
    for (int column = 0; column < 3; ++column)
        m_table->setColumnHidden(column, true);
    QCOMPARE(visibleCellsText(m_table), QStringLiteral("\n"));
}

void TableCopyTest::currentColumn()
{
    m_table->setCurrentCell(2, 1);
    delete m_table->takeItem(1, 1);
    QCOMPARE(currentColumnText(m_table), QStringLiteral("B1\n\nB3\n"));
}

void TableCopyTest::currentColumnMayBeHidden()
{
    m_table->setCurrentCell(0, 2);
    m_table->setColumnHidden(2, true);
    QCOMPARE(m_table->currentColumn(), 2);
    QCOMPARE(currentColumnText(m_table), QStringLiteral("C1\nC2\nC3\n"));
}

void TableCopyTest::withoutACurrentColumnEveryRowIsALine()
{
    QCOMPARE(m_table->currentColumn(), -1);
    QCOMPARE(currentColumnText(m_table), QStringLiteral("\n\n\n"));
}

void TableCopyTest::currentRow()
{
    m_table->setCurrentCell(1, 0);
    QCOMPARE(currentRowText(m_table), QStringLiteral("A2\tB2\tC2\t"));
}

void TableCopyTest::currentRowLeavesHiddenColumnsOut()
{
    m_table->setCurrentCell(1, 0);
    m_table->setColumnHidden(2, true);
    delete m_table->takeItem(1, 0);
    QCOMPARE(currentRowText(m_table), QStringLiteral("B2\t"));
}

void TableCopyTest::withoutACurrentRowNothingIsCopied()
{
    QCOMPARE(m_table->currentRow(), -1);
    QCOMPARE(currentRowText(m_table), QString());
}

void TableCopyTest::anEmptyTable()
{
    m_table->setRowCount(0);
    QCOMPARE(selectedCellsText(m_table), QString());
    QCOMPARE(visibleCellsText(m_table), QString());
    QCOMPARE(currentColumnText(m_table), QString());
    QCOMPARE(currentRowText(m_table), QString());
}

void TableCopyTest::textsAreTakenAsTheyStand()
{
    m_table->setRowCount(2);
    m_table->item(0, 0)->setText(QStringLiteral(" 主板\t二\r\n三 "));
    m_table->item(0, 1)->setText(QString());
    m_table->item(0, 2)->setText(QStringLiteral("\n"));
    QCOMPARE(visibleCellsText(m_table), QStringLiteral(" 主板\t二\r\n三 \t\t\n\nA2\tB2\tC2\n"));
}

/// Columns that were moved are still copied in the table's own order, rows in
/// the order in which they were sorted.
void TableCopyTest::theTableOrderOfTheMomentCounts()
{
    m_table->horizontalHeader()->moveSection(0, 2);
    m_table->sortItems(0, Qt::DescendingOrder);
    m_table->setCurrentCell(0, 0);
    QCOMPARE(currentRowText(m_table), QStringLiteral("A3\tB3\tC3\t"));
    QCOMPARE(currentColumnText(m_table), QStringLiteral("A3\nA2\nA1\n"));
}

void TableCopyTest::theClipboardIsReplaced()
{
    copyToClipboard(QStringLiteral("before"));
    copyToClipboard(QStringLiteral("A1\t主板\n"));
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("A1\t主板\n"));
}

void TableCopyTest::nothingReplacesTheClipboardToo()
{
    copyToClipboard(QStringLiteral("before"));
    copyToClipboard(QString());
    QCOMPARE(QApplication::clipboard()->text(), QString());
}

void TableCopyTest::theCopyMenu()
{
    QTest::ignoreMessage(QtWarningMsg,
                         "QObject::connect: No such slot QObject::on__copyAct_triggered()");
    QTest::ignoreMessage(QtWarningMsg,
                         "QObject::connect: No such slot QObject::on__copyColumnAct_triggered()");
    QTest::ignoreMessage(QtWarningMsg,
                         "QObject::connect: No such slot QObject::on__copyRowAct_triggered()");
    QTest::ignoreMessage(QtWarningMsg,
                         "QObject::connect: No such slot QObject::on__copyAllAct_triggered()");
    const QObject noDesk;
    const QMenu *menu = makeCopyMenu(m_table, QStringLiteral("Copy"), &noDesk);
    QCOMPARE(menu->parentWidget(), m_table);
    QStringList captions;
    const auto actions = menu->actions();
    for (const QAction *action : actions)
        captions << action->text();
    QCOMPARE(captions.join(QLatin1Char('/')),
             QStringLiteral("Copy/复制当前列/复制当前行/复制所有"));
}

void TableCopyTest::theHeaderMenu()
{
    const QMenu *menu = makeHeaderMenu(m_table, QStringLiteral("Copy"));
    QCOMPARE(menu->parentWidget(), m_table);
    QCOMPARE(menu->actions().size(), 1);
    QCOMPARE(menu->actions().first()->text(), QStringLiteral("Copy"));
}

KODMS_TEST_MAIN(TableCopyTest, QApplication)
#include "TableCopyTest.moc"
