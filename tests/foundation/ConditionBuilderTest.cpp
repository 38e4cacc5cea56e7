// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/search/ConditionBuilder.h"

#include "tests/desks/ConditionLines.h"
#include "tests/fakes/FakeServices.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QTest>

using namespace KODMS::UI;
using KODMS::Fakes::ConditionList;
using KODMS::Fakes::FakeServices;
using KODMS::Tests::allFields;
using KODMS::Tests::Expected;

class ConditionBuilderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void theRecordStartsEmpty();
    void whatAStepSetsStaysSet();
    void everySettingCanBeTakenBack();
    void anAddWithoutAValueKeepsTheValue();
    void theOrderIsCarriedFromThenOn();
    void twoBuildersOnOneListDoNotShareTheirRecord();
    void anOrderHistoryReadsAsItShould();
    void theUserIsFetchedAfreshEachTime();
};

void ConditionBuilderTest::theRecordStartsEmpty()
{
    ConditionList list;
    ConditionBuilder conditions(list);
    QVERIFY(list.empty());
    conditions.addAgain();
    QCOMPARE(allFields(list), allFields({KODMS::DataLib::Model::DB_Search()}));
}

void ConditionBuilderTest::whatAStepSetsStaysSet()
{
    ConditionList list;
    ConditionBuilder conditions(list);
    conditions.openBracket().contains().add("A", "1");
    conditions.joinByOr().add("B", "2");
    conditions.closeBracket().asNumber().add("C", "3");
    QCOMPARE(
        allFields(list),
        allFields({Expected("A", "1").open().fuzzy(), Expected("B", "2").open().fuzzy().orJoin(),
                   Expected("C", "3").open().fuzzy().orJoin().close().number()}));
}

void ConditionBuilderTest::everySettingCanBeTakenBack()
{
    ConditionList list;
    ConditionBuilder conditions(list);
    conditions.joinByOr().openBracket().closeBracket().contains().plainRelation();
    conditions.joinByAnd().noOpenBracket().noCloseBracket().equals().add("A", "1");
    QCOMPARE(allFields(list), allFields({Expected("A", "1")}));
}

void ConditionBuilderTest::anAddWithoutAValueKeepsTheValue()
{
    ConditionList list;
    ConditionBuilder conditions(list);
    conditions.value("文").add("A").add("B").add("C", "x").add("D");
    QCOMPARE(allFields(list), allFields({Expected("A", "文"), Expected("B", "文"),
                                         Expected("C", "x"), Expected("D", "x")}));
}

void ConditionBuilderTest::theOrderIsCarriedFromThenOn()
{
    ConditionList list;
    ConditionBuilder conditions(list);
    conditions.add("A", "1").newestFirst("Time").addAgain();
    QCOMPARE(allFields(list), allFields({Expected("A", "1"), Expected("A", "1").sorted("Time")}));
}

void ConditionBuilderTest::twoBuildersOnOneListDoNotShareTheirRecord()
{
    ConditionList list;
    ConditionBuilder first(list);
    first.contains().joinByOr().add("A", "1");
    ConditionBuilder(list).openBracket().add("B", "2");
    first.add("C");
    QCOMPARE(allFields(list),
             allFields({Expected("A", "1").fuzzy().orJoin(), Expected("B", "2").open(),
                        Expected("C", "1").fuzzy().orJoin()}));
}

void ConditionBuilderTest::anOrderHistoryReadsAsItShould()
{
    ConditionList list;
    ConditionBuilder conditions(list);
    conditions.joinByAnd().openBracket().add("Flow_FlowStatus", "2");
    conditions.joinByOr().noOpenBracket().add("Flow_FlowStatus", "3");
    conditions.joinByAnd().closeBracket().add("Flow_CheckFlag", "2");
    conditions.openBracket().noCloseBracket().add("Flow_CreateUserId", "9");
    conditions.joinByOr().noOpenBracket().closeBracket().newestFirst("Flow_CreateTime");
    conditions.add("PCAssign_ExecutorId", "9");
    QCOMPARE(
        allFields(list),
        allFields(
            {Expected("Flow_FlowStatus", "2").open(), Expected("Flow_FlowStatus", "3").orJoin(),
             Expected("Flow_CheckFlag", "2").close(), Expected("Flow_CreateUserId", "9").open(),
             Expected("PCAssign_ExecutorId", "9").orJoin().close().sorted("Flow_CreateTime")}));
}

void ConditionBuilderTest::theUserIsFetchedAfreshEachTime()
{
    FakeServices::instance().setUser(12);
    QCOMPARE(currentUserIdText(), std::string("12"));
    FakeServices::instance().setUser(-3);
    QCOMPARE(currentUserIdText(), std::string("-3"));
    QCOMPARE(FakeServices::instance().count("DMS_StdCommon::getCurrentUser"), 2);
}

KODMS_TEST_MAIN(ConditionBuilderTest, QCoreApplication)
#include "ConditionBuilderTest.moc"
