// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/TableHelpers.h"

#include "tests/support/TestMain.h"

#include <QApplication>
#include <QTableWidget>
#include <QTest>

using namespace KODMS::UI;

class TableHelpersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rowsAreRemovedFromTheLastUp();
    void aMissingCellReadsAsEmpty();
    void anItemIsFoundByIdentityNotByText();
    void anItemOfAnotherTableIsNowhere();
    void clicksOnOneHeaderTurnTheOrder();
    void anotherHeaderStartsAscendingAgain();
    void sortingIsByText();
};

namespace {

void fill(QTableWidget &table, const QStringList &firstColumn)
{
    table.setColumnCount(2);
    table.setRowCount(firstColumn.size());
    for (int row = 0; row < firstColumn.size(); ++row) {
        table.setItem(row, 0, new QTableWidgetItem(firstColumn.at(row)));
        table.setItem(row, 1, new QTableWidgetItem(QString::number(9 - row)));
    }
}

QString column(const QTableWidget &table, int number)
{
    QStringList texts;
    for (int row = 0; row < table.rowCount(); ++row)
        texts << table.item(row, number)->text();
    return texts.join(QLatin1Char(' '));
}

} // namespace

void TableHelpersTest::rowsAreRemovedFromTheLastUp()
{
    QTableWidget table;
    fill(table, {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    QStringList removed;
    connect(table.model(), &QAbstractItemModel::rowsRemoved, this,
            [&](const QModelIndex &, int first, int last) {
                removed << QStringLiteral("%1-%2").arg(first).arg(last);
            });
    removeAllRows(&table);
    QCOMPARE(removed,
             QStringList({QStringLiteral("2-2"), QStringLiteral("1-1"), QStringLiteral("0-0")}));
    QCOMPARE(table.rowCount(), 0);
}

void TableHelpersTest::aMissingCellReadsAsEmpty()
{
    QTableWidget table(2, 2);
    table.setItem(0, 0, new QTableWidgetItem(QStringLiteral("x")));
    QCOMPARE(cellText(&table, 0, 0), QStringLiteral("x"));
    QCOMPARE(cellText(&table, 1, 1), QString());
    QCOMPARE(cellText(&table, -1, 0), QString());
}

void TableHelpersTest::anItemIsFoundByIdentityNotByText()
{
    QTableWidget table;
    fill(table, {QStringLiteral("same"), QStringLiteral("same"), QStringLiteral("same")});
    QCOMPARE(rowOfItem(&table, table.item(2, 0)), 2);
    QCOMPARE(rowOfItem(&table, table.item(1, 1)), 1);
}

void TableHelpersTest::anItemOfAnotherTableIsNowhere()
{
    QTableWidget table;
    fill(table, {QStringLiteral("x")});
    const QTableWidgetItem stranger(QStringLiteral("x"));
    QCOMPARE(rowOfItem(&table, &stranger), -1);
}

void TableHelpersTest::clicksOnOneHeaderTurnTheOrder()
{
    QTableWidget table;
    fill(table, {QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("c")});
    int sortColumn = -1;
    int descending = 0;
    sortByHeaderClick(&table, 0, sortColumn, descending);
    QCOMPARE(column(table, 0), QStringLiteral("a b c"));
    QCOMPARE(column(table, 1), QStringLiteral("8 9 7"));
    sortByHeaderClick(&table, 0, sortColumn, descending);
    QCOMPARE(column(table, 0), QStringLiteral("c b a"));
    sortByHeaderClick(&table, 0, sortColumn, descending);
    QCOMPARE(column(table, 0), QStringLiteral("a b c"));
}

void TableHelpersTest::anotherHeaderStartsAscendingAgain()
{
    QTableWidget table;
    fill(table, {QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("c")});
    int sortColumn = -1;
    int descending = 0;
    sortByHeaderClick(&table, 0, sortColumn, descending);
    sortByHeaderClick(&table, 1, sortColumn, descending);
    QCOMPARE(column(table, 1), QStringLiteral("7 8 9"));
    sortByHeaderClick(&table, 0, sortColumn, descending);
    QCOMPARE(column(table, 0), QStringLiteral("a b c"));
    QCOMPARE(sortColumn, 0);
    QCOMPARE(descending, 1);
}

void TableHelpersTest::sortingIsByText()
{
    QTableWidget table;
    fill(table, {QStringLiteral("10"), QStringLiteral("9"), QStringLiteral("1")});
    int sortColumn = -1;
    int descending = 0;
    sortByHeaderClick(&table, 0, sortColumn, descending);
    QCOMPARE(column(table, 0), QStringLiteral("1 10 9"));
}

KODMS_TEST_MAIN(TableHelpersTest, QApplication)
#include "TableHelpersTest.moc"
