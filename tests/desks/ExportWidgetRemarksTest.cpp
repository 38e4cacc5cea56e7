// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/DeskTest.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>

using namespace KODMS::Tests;
using KODMS::UI::DMS_Export_Widget;

/// Remarks typed into the job table, and clicks on its headers.
class ExportWidgetRemarksTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        FakeServices::instance().reset();
        FakeServices::instance().setUser(42);
        answerWithFlows(3);
    }

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
};

namespace {

void clickHeader(const DMS_Export_Widget &desk, int column)
{
    auto *header = jobTable(desk)->horizontalHeader();
    const QPoint middle(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                        header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, middle);
}

/// Opens the cell's editor as a user does, types, and ends with a key.
void typeInto(const DMS_Export_Widget &desk, int row, int column, const QString &text,
              Qt::Key end = Qt::Key_Return)
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

QStringList remarks()
{
    QStringList lines;
    const auto calls = FakeServices::instance().calls("Odbpp_JobFlowBll::UpdateTips");
    for (const auto &call : calls)
        lines << KODMS::Fakes::printable(call);
    return lines;
}

} // namespace

void ExportWidgetRemarksTest::aRemarkIsTypedIntoItsCell()
{
    const auto desk = makeDesk({Right::Admin});
    typeInto(*desk, 1, 12, QStringLiteral("urgent"));
    QCOMPARE(
        remarks(),
        QStringList({QStringLiteral("Odbpp_JobFlowBll::UpdateTips(42, \"urgent\", \"guid2\")")}));
    QCOMPARE(jobTable(*desk)->item(1, 12)->text(), QStringLiteral("urgent"));
}

void ExportWidgetRemarksTest::whateverCellIsEditedItsTextIsTheRemark_data()
{
    QTest::addColumn<int>("column");
    const int visible[] = {1, 2, 6, 7, 9, 12, 17};
    for (const int column : visible)
        QTest::addRow("column %d", column) << column;
}

void ExportWidgetRemarksTest::whateverCellIsEditedItsTextIsTheRemark()
{
    QFETCH(int, column);
    const auto desk = makeDesk({Right::Admin});
    typeInto(*desk, 2, column, QStringLiteral("name"));
    QCOMPARE(
        remarks(),
        QStringList({QStringLiteral("Odbpp_JobFlowBll::UpdateTips(42, \"name\", \"guid3\")")}));
}

/// Every flow here has the same original name and remark.
void ExportWidgetRemarksTest::equalTextsElsewhereDoNotMisleadTheRemark()
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

void ExportWidgetRemarksTest::anUnchangedTextIsNotStoredAgain()
{
    const auto desk = makeDesk({Right::Admin});
    typeInto(*desk, 0, 12, QString());
    QVERIFY(remarks().isEmpty());
}

void ExportWidgetRemarksTest::anAbandonedEditStoresNothing()
{
    const auto desk = makeDesk({Right::Admin});
    typeInto(*desk, 0, 12, QStringLiteral("never mind"), Qt::Key_Escape);
    QVERIFY(remarks().isEmpty());
    QCOMPARE(jobTable(*desk)->item(0, 12)->text(), QStringLiteral("board"));
}

void ExportWidgetRemarksTest::aFailedRemarkIsNotReported()
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

void ExportWidgetRemarksTest::aRemarkAfterSortingBelongsToItsRow()
{
    const auto desk = makeDesk({Right::Admin});
    clickHeader(*desk, 1);
    clickHeader(*desk, 1);
    typeInto(*desk, 0, 12, QStringLiteral("top"));
    QCOMPARE(remarks(),
             QStringList({QStringLiteral("Odbpp_JobFlowBll::UpdateTips(42, \"top\", \"guid3\")")}));
}

void ExportWidgetRemarksTest::aRowWithoutAGuidSendsAnEmptyOne()
{
    FakeServices::instance().flowPages.always({{{}}, 1});
    const auto desk = makeDesk({Right::Admin});
    jobTable(*desk)->item(0, 12)->setText(QStringLiteral("x"));
    QCOMPARE(remarks(),
             QStringList({QStringLiteral("Odbpp_JobFlowBll::UpdateTips(42, \"x\", \"\")")}));
}

void ExportWidgetRemarksTest::headerClicksSortThePage()
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

void ExportWidgetRemarksTest::anotherHeaderStartsAscending()
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

void ExportWidgetRemarksTest::theOrderOfClicksSurvivesARefill()
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

void ExportWidgetRemarksTest::sortingAsksNobody()
{
    const auto desk = makeDesk({Right::Admin});
    FakeServices::instance().forgetCalls();
    clickHeader(*desk, 2);
    clickHeader(*desk, 6);
    QVERIFY(FakeServices::instance().calls().isEmpty());
}

KODMS_TEST_MAIN(ExportWidgetRemarksTest, QApplication)
#include "ExportWidgetRemarksTest.moc"
