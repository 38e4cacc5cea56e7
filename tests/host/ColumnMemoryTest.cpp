// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/ColumnMemory.h"
#include "tests/support/TestMain.h"

#include <QHeaderView>
#include <QTableWidget>
#include <QTest>

#include <memory>

using KODMS::Host::ColumnMemory;

class ColumnMemoryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void widthsAndOrderComeBack();
    void aNewColumnStaysWhereTheTableHasIt();
    void aVanishedColumnIsIgnored();
    void aRenumberedColumnIsKnownByItsName();
    void columnsOfOneNameAreToldApart();
    void hiddenAndStretchedColumnsKeepTheirSize();
    void anAbsurdWidthIsBounded();
    void whatIsNoMemoryChangesNothing_data();
    void whatIsNoMemoryChangesNothing();
    void savingTwiceGivesTheSameText();
};

namespace {

std::unique_ptr<QTableWidget> tableWith(const QStringList &columns)
{
    auto table = std::make_unique<QTableWidget>(0, columns.size());
    table->setHorizontalHeaderLabels(columns);
    return table;
}

QStringList shownOrder(const QTableWidget &table)
{
    const QHeaderView &header = *table.horizontalHeader();
    QStringList order;
    for (int visual = 0; visual < header.count(); ++visual)
        order << ColumnMemory::columnId(header, header.logicalIndex(visual));
    return order;
}

QStringList names(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '));
}

QByteArray memoryOf(const QStringList &order, int width)
{
    QByteArray columns;
    for (const QString &id : order) {
        if (!columns.isEmpty())
            columns += ',';
        columns += "{\"id\":\"" + id.toUtf8() + "\",\"width\":" + QByteArray::number(width) + "}";
    }
    return "{\"version\":1,\"columns\":[" + columns + "]}";
}

} // namespace

void ColumnMemoryTest::widthsAndOrderComeBack()
{
    const auto before = tableWith(names("料号名称 状态 批号"));
    before->horizontalHeader()->moveSection(2, 0);
    before->setColumnWidth(1, 171);
    const QByteArray text = ColumnMemory::save(*before->horizontalHeader());

    const auto after = tableWith(names("料号名称 状态 批号"));
    QVERIFY(ColumnMemory::restore(*after->horizontalHeader(), text));
    QCOMPARE(shownOrder(*after), names("批号 料号名称 状态"));
    QCOMPARE(after->columnWidth(1), 171);
}

void ColumnMemoryTest::aNewColumnStaysWhereTheTableHasIt()
{
    const auto table = tableWith(names("a b new c"));
    QVERIFY(ColumnMemory::restore(*table->horizontalHeader(), memoryOf(names("a b c"), 88)));
    QCOMPARE(shownOrder(*table), names("a b new c"));
    QCOMPARE(table->columnWidth(3), 88);
    QCOMPARE(table->columnWidth(2), table->horizontalHeader()->defaultSectionSize());
}

void ColumnMemoryTest::aVanishedColumnIsIgnored()
{
    const auto table = tableWith(names("a c"));
    QVERIFY(ColumnMemory::restore(*table->horizontalHeader(), memoryOf(names("c gone a"), 88)));
    QCOMPARE(shownOrder(*table), names("c a"));
    QCOMPARE(table->columnWidth(0), 88);
}

void ColumnMemoryTest::aRenumberedColumnIsKnownByItsName()
{
    const auto before = tableWith(names("a b c"));
    before->setColumnWidth(1, 171);
    const QByteArray text = ColumnMemory::save(*before->horizontalHeader());
    const auto after = tableWith(names("first a b c"));
    QVERIFY(ColumnMemory::restore(*after->horizontalHeader(), text));
    QCOMPARE(after->columnWidth(2), 171);
}

void ColumnMemoryTest::columnsOfOneNameAreToldApart()
{
    const auto before = tableWith(names("a b a"));
    before->setColumnWidth(0, 61);
    before->setColumnWidth(2, 63);
    before->horizontalHeader()->moveSection(2, 0);
    const auto after = tableWith(names("a b a"));
    QVERIFY(ColumnMemory::restore(*after->horizontalHeader(),
                                  ColumnMemory::save(*before->horizontalHeader())));
    QCOMPARE(shownOrder(*after), names("a#2 a b"));
    QCOMPARE(after->columnWidth(0), 61);
    QCOMPARE(after->columnWidth(2), 63);
}

void ColumnMemoryTest::hiddenAndStretchedColumnsKeepTheirSize()
{
    const auto table = tableWith(names("id title"));
    table->setColumnHidden(0, true);
    table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    const int stretched = table->columnWidth(1);
    QVERIFY(ColumnMemory::restore(*table->horizontalHeader(), memoryOf(names("id title"), 333)));
    QVERIFY(table->isColumnHidden(0));
    QCOMPARE(table->columnWidth(1), stretched);
}

void ColumnMemoryTest::anAbsurdWidthIsBounded()
{
    const auto table = tableWith(names("a b"));
    const QByteArray text = "{\"version\":1,\"columns\":[{\"id\":\"a\",\"width\":2000000000},"
                            "{\"id\":\"b\",\"width\":1}]}";
    QVERIFY(ColumnMemory::restore(*table->horizontalHeader(), text));
    QCOMPARE(table->columnWidth(0), 2000);
    QCOMPARE(table->columnWidth(1), table->horizontalHeader()->minimumSectionSize());
}

void ColumnMemoryTest::whatIsNoMemoryChangesNothing_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("not JSON") << QByteArray("\x00\xff{", 3);
    QTest::newRow("cut short") << memoryOf(names("b a"), 77).chopped(9);
    QTest::newRow("another version")
        << QByteArray("{\"version\":2,\"columns\":[{\"id\":\"b\",\"width\":77}]}");
    QTest::newRow("columns are no list") << QByteArray("{\"version\":1,\"columns\":7}");
    QTest::newRow("columns without a name")
        << QByteArray("{\"version\":1,\"columns\":[{\"width\":77},3,null]}");
}

void ColumnMemoryTest::whatIsNoMemoryChangesNothing()
{
    QFETCH(QByteArray, text);
    const auto table = tableWith(names("a b"));
    const QByteArray before = ColumnMemory::save(*table->horizontalHeader());
    QVERIFY(!ColumnMemory::restore(*table->horizontalHeader(), text));
    QCOMPARE(ColumnMemory::save(*table->horizontalHeader()), before);
}

void ColumnMemoryTest::savingTwiceGivesTheSameText()
{
    const auto table = tableWith(names("a b c"));
    table->horizontalHeader()->moveSection(0, 2);
    const QByteArray first = ColumnMemory::save(*table->horizontalHeader());
    QVERIFY(ColumnMemory::restore(*table->horizontalHeader(), first));
    QCOMPARE(ColumnMemory::save(*table->horizontalHeader()), first);
}

KODMS_TEST_MAIN(ColumnMemoryTest, QApplication)
#include "ColumnMemoryTest.moc"
