// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/status/FlowStatus.h"

#include "foundation/status/ColourCode.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QTableWidgetItem>
#include <QTest>

#include <map>
#include <utility>

using namespace KODMS::UI;

class FlowStatusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyStatusPairHasItsCell_data();
    void everyStatusPairHasItsCell();
    void noFlowIsShownInBlue();
    void questionFlagsHaveWordAndColour_data();
    void questionFlagsHaveWordAndColour();
    void colourCodesColourTheText_data();
    void colourCodesColourTheText();
    void unknownCodesLeaveTheItemAsItIs_data();
    void unknownCodesLeaveTheItemAsItIs();
};

void FlowStatusTest::everyStatusPairHasItsCell_data()
{
    const std::map<std::pair<int, int>, QString> known = {
        {{0, 0}, QStringLiteral("待前处理|white")},
        {{1, 0}, QStringLiteral("前处理待审核|lightGray")},
        {{1, 1}, QStringLiteral("前处理未过|r")},
        {{1, 2}, QStringLiteral("前处理通过|green")},
        {{2, 0}, QStringLiteral("机器人处理中|lightGray")},
        {{2, 1}, QStringLiteral("机器人未过|r")},
        {{2, 2}, QStringLiteral("机器人通过|dg")},
        {{3, 2}, QStringLiteral("流程完成|dg")},
    };
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("flag");
    QTest::addColumn<QString>("cell");
    for (int status = -1; status <= 5; ++status) {
        for (int flag = -1; flag <= 4; ++flag) {
            const auto found = known.find({status, flag});
            QTest::addRow("status %d, flag %d", status, flag)
                << status << flag
                << (found == known.end() ? QStringLiteral("未知") : found->second);
        }
    }
}

void FlowStatusTest::everyStatusPairHasItsCell()
{
    QFETCH(int, status);
    QFETCH(int, flag);
    QTEST(flowStatusText(status, flag), "cell");
}

void FlowStatusTest::noFlowIsShownInBlue()
{
    for (int status = -1; status <= 5; ++status)
        for (int flag = -1; flag <= 5; ++flag)
            QVERIFY(!flowStatusText(status, flag).endsWith(QLatin1String("|b")));
}

void FlowStatusTest::questionFlagsHaveWordAndColour_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<QString>("word");
    QTest::addColumn<int>("colour"); // -1: none
    QTest::newRow("not reviewed") << 0 << QStringLiteral("未审核") << -1;
    QTest::newRow("failed, red") << 1 << QStringLiteral("审核未通过") << int(Qt::red);
    QTest::newRow("passed, dark green") << 2 << QStringLiteral("审核通过") << int(Qt::darkGreen);
    QTest::newRow("finished, blue") << 3 << QStringLiteral("完成") << int(Qt::blue);
    QTest::newRow("above the known") << 4 << QStringLiteral("未知") << -1;
    QTest::newRow("below the known") << -1 << QStringLiteral("未知") << -1;
}

void FlowStatusTest::questionFlagsHaveWordAndColour()
{
    QFETCH(int, flag);
    const QuestionCheck check = questionCheckText(flag);
    QTEST(check.text, "word");
    QTEST(check.colour ? int(*check.colour) : -1, "colour");
}

void FlowStatusTest::colourCodesColourTheText_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("colour");
    const std::map<const char *, Qt::GlobalColor> codes = {
        {"dg", Qt::darkGreen}, {"r", Qt::red},
        {"b", Qt::blue},       {"green", Qt::green},
        {"g", Qt::green},      {"darkYellow", Qt::darkYellow},
        {"white", Qt::white},  {"lightGray", Qt::lightGray},
        {"gray", Qt::gray},    {"darkRed", Qt::darkRed}};
    for (const auto &code : codes)
        QTest::newRow(code.first) << QString::fromLatin1(code.first) << int(code.second);
}

void FlowStatusTest::colourCodesColourTheText()
{
    QFETCH(QString, code);
    QFETCH(int, colour);
    QTableWidgetItem item(QStringLiteral("abc"));
    applyColourCode(code, &item);
    QCOMPARE(item.foreground().color(), QColor(static_cast<Qt::GlobalColor>(colour)));
    QCOMPARE(item.background(), QBrush());
    QCOMPARE(item.text(), QStringLiteral("abc"));
}

void FlowStatusTest::unknownCodesLeaveTheItemAsItIs_data()
{
    QTest::addColumn<QString>("code");
    const char *const codes[] = {"",          "G",  "Green", "R",   "DG", "White",
                                 "lightgray", " r", "r ",    "red", "|r", "darkred"};
    for (const char *code : codes)
        QTest::addRow("code '%s'", code) << QString::fromLatin1(code);
}

void FlowStatusTest::unknownCodesLeaveTheItemAsItIs()
{
    QFETCH(QString, code);
    QTableWidgetItem item;
    applyColourCode(code, &item);
    QCOMPARE(item.foreground(), QBrush());
    item.setForeground(QBrush(Qt::cyan));
    applyColourCode(code, &item);
    QCOMPARE(item.foreground().color(), QColor(Qt::cyan));
}

KODMS_TEST_MAIN(FlowStatusTest, QApplication)
#include "FlowStatusTest.moc"
