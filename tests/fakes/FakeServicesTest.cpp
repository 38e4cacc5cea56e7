// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/fakes/FakeServices.h"

#include "foundation/bll/Odbpp_Flow_ViewBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/bll/Odbpp_QuestionsBll.h"
#include "foundation/common/Common.h"
#include "foundation/common/DBS_API.h"
#include "foundation/common/DMS_Function.h"
#include "foundation/ui/DMS_Import_Widget.h"
#include "foundation/ui/DMS_JobCheck_Widget.h"
#include "foundation/ui/DMS_StdCommon.h"
#include "foundation/ui/DMS_UICommon.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

using namespace KODMS;
using namespace KODMS::Fakes;

class FakeServicesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void callsAreKeptInOrderWithTheirArguments();
    void mapsAndWideTextsArePrintable();
    void queuedAnswersComeBeforeTheFixedOne();
    void aCallbackComputesTheAnswerFromTheCall();
    void operationsSucceedUnlessToldOtherwise();
    void pagedQueriesKeepBothLists();
    void rightsUserAndConfigurationAreWhatTheTestSays();
    void questionsForRightsAreNotOperations();
    void theHubRaisesBothRefreshSignals();
    void aSilentHubOnlyRecords();
    void secondaryWindowsAreListed();
    void resetForgetsEverything();
};

void FakeServicesTest::callsAreKeptInOrderWithTheirArguments()
{
    auto &services = FakeServices::instance();
    DataLib::BLL::Odbpp_JobFlowBll().UpdateTips(7, "急单", "f1");
    DBS_API::kodms_update_flow_status("A1B000001", 3, 2);
    QCOMPARE(
        services.operationLines(),
        QStringList({QStringLiteral("Odbpp_JobFlowBll::UpdateTips(7, \"急单\", \"f1\")"),
                     QStringLiteral("DBS_API::kodms_update_flow_status(\"A1B000001\", 3, 2)")}));
    QCOMPARE(services.calls("Odbpp_JobFlowBll::UpdateTips").first().arguments,
             QVariantList({7, QStringLiteral("急单"), QStringLiteral("f1")}));
    QCOMPARE(services.count("Odbpp_JobFlowBll::UpdateState"), 0);
}

void FakeServicesTest::mapsAndWideTextsArePrintable()
{
    std::vector<DataLib::Model::Odbpp_JobFlow> flows;
    DataLib::BLL::Odbpp_JobFlowBll().select({{"FlowGUID", "f1"}}, {{"Flow_Id", 4}}, flows);
    DMS_Function::ExtractorFileFromcompressFile(L"/下载/a.tgz", L"tgz", L"/下载/a/");
    QCOMPARE(FakeServices::instance().operationLines(),
             QStringList({QStringLiteral("Odbpp_JobFlowBll::select({FlowGUID: f1}, {Flow_Id: 4})"),
                          QStringLiteral("DMS_Function::ExtractorFileFromcompressFile("
                                         "\"/下载/a.tgz\", \"tgz\", \"/下载/a/\")")}));
}

void FakeServicesTest::queuedAnswersComeBeforeTheFixedOne()
{
    auto &guids = FakeServices::instance().guids;
    guids.always("always");
    guids.once("first");
    guids.once("second");
    auto *common = Common::commonInterface();
    QCOMPARE(common->getGUID(), std::string("first"));
    QCOMPARE(common->getGUID(), std::string("second"));
    QCOMPARE(common->getGUID(), std::string("always"));
    QCOMPARE(common->getGUID(), std::string("always"));
}

void FakeServicesTest::aCallbackComputesTheAnswerFromTheCall()
{
    FakeServices::instance().robotParameters.compute(
        [](const Call &call) { return call.arguments.first().toString().toStdString() + "!"; });
    QCOMPARE(DBS_API::getWebRobotParaByJobName("web000001"), std::string("web000001!"));
}

void FakeServicesTest::operationsSucceedUnlessToldOtherwise()
{
    QVERIFY(DataLib::BLL::Odbpp_QuestionsBll().UpdateQuestionStatus(1, 2, 3));
    QCOMPARE(Common::MongodbPut("db", "fs", "/tmp/x", "x"), 0);
    FakeServices::instance().result("Odbpp_QuestionsBll::UpdateQuestionStatus").once(0);
    FakeServices::instance().result("Common::MongodbPut").always(-1);
    QVERIFY(!DataLib::BLL::Odbpp_QuestionsBll().UpdateQuestionStatus(1, 2, 3));
    QVERIFY(DataLib::BLL::Odbpp_QuestionsBll().UpdateQuestionStatus(1, 2, 3));
    QCOMPARE(Common::MongodbPut("db", "fs", "/tmp/x", "x"), -1);
}

void FakeServicesTest::pagedQueriesKeepBothLists()
{
    auto &services = FakeServices::instance();
    DataLib::Model::Odbpp_Flow_View flow;
    flow.id = 5;
    services.flowPages.once({{flow}, 61});
    DataLib::Model::DB_Search condition;
    condition.fieldName = "KoJobName";
    ConditionList conditions{condition, condition};
    ConditionList countConditions{condition};
    std::vector<DataLib::Model::Odbpp_Flow_View> rows;
    int total = -1;
    QVERIFY(DataLib::BLL::Odbpp_Flow_ViewBll().selectAndCountBySearchModel(
        conditions, countConditions, rows, total));
    QCOMPARE(rows.size(), size_t(1));
    QCOMPARE(rows.front().id, 5);
    QCOMPARE(total, 61);
    const Call call = services.calls().last();
    QCOMPARE(call.arguments.at(0).value<ConditionList>().size(), size_t(2));
    QCOMPARE(call.arguments.at(1).value<ConditionList>().size(), size_t(1));
    QVERIFY(printable(call).contains(QLatin1String("AND KoJobName = \"\"")));
}

void FakeServicesTest::rightsUserAndConfigurationAreWhatTheTestSays()
{
    auto &services = FakeServices::instance();
    services.grant(Right::CheckAuthority);
    services.setUser(42);
    services.config.robotPort = 9000;
    QVERIFY(UI::DMS_UICommon::interface()->hasCheckAuthority());
    QVERIFY(!UI::DMS_UICommon::interface()->hasAdminRole());
    QCOMPARE(UI::DMS_StdCommon::interface()->getCurrentUser().id, 42);
    QCOMPARE(Common::commonInterface()->getConfig().robotPort, 9000);
}

void FakeServicesTest::questionsForRightsAreNotOperations()
{
    auto &services = FakeServices::instance();
    UI::DMS_UICommon::interface()->hasAdminRole();
    UI::DMS_StdCommon::interface()->getCurrentUser();
    Common::commonInterface()->getConfig();
    QCOMPARE(services.calls().size(), 3);
    QVERIFY(services.operations().isEmpty());
}

void FakeServicesTest::theHubRaisesBothRefreshSignals()
{
    QSignalSpy files(UI::DMS_UICommon::interface(), SIGNAL(refreshOrigFileTable()));
    QSignalSpy flows(UI::DMS_UICommon::interface(), SIGNAL(refreshExportJobTable()));
    UI::DMS_UICommon::interface()->emitGobalSingal();
    QCOMPARE(files.count(), 1);
    QCOMPARE(flows.count(), 1);
    QCOMPARE(FakeServices::instance().count("DMS_UICommon::emitGobalSingal"), 1);
}

void FakeServicesTest::aSilentHubOnlyRecords()
{
    FakeServices::instance().hubRaisesSignals = false;
    QSignalSpy flows(UI::DMS_UICommon::interface(), SIGNAL(refreshExportJobTable()));
    UI::DMS_UICommon::interface()->emitGobalSingal();
    QCOMPARE(flows.count(), 0);
    FakeServices::instance().raiseRefreshExportJobTable();
    QCOMPARE(flows.count(), 1);
}

void FakeServicesTest::secondaryWindowsAreListed()
{
    auto &services = FakeServices::instance();
    QWidget desk;
    {
        UI::DMS_JobCheck_Widget view(9, true, &desk);
        view.m_id = 10;
        view.getQuestionData();
        UI::DMS_Import_Widget import;
        UI::Import_Info info;
        info.jobName = QStringLiteral("web000001");
        import.setFlowGuid(info);
        QCOMPARE(services.windows.size(), 2);
        QCOMPARE(services.windows.at(0).window.data(), static_cast<QWidget *>(&view));
    }
    QCOMPARE(services.windows.at(0).id, 9);
    QCOMPARE(services.windows.at(0).mode, 1);
    QCOMPARE(services.windows.at(0).parent.data(), &desk);
    QVERIFY(services.windows.at(0).window.isNull());
    QVERIFY(services.windows.at(1).parent.isNull());
    QCOMPARE(
        services.operationLines(),
        QStringList({QStringLiteral("DMS_JobCheck_Widget::DMS_JobCheck_Widget(9, true, QWidget)"),
                     QStringLiteral("DMS_JobCheck_Widget::getQuestionData(10)"),
                     QStringLiteral("DMS_Import_Widget::DMS_Import_Widget(0, null)"),
                     QStringLiteral("DMS_Import_Widget::setFlowGuid(\"web000001\")")}));
}

void FakeServicesTest::resetForgetsEverything()
{
    auto &services = FakeServices::instance();
    services.grant(Right::Admin);
    services.setUser(3);
    services.guids.always("x");
    services.result("Odbpp_JobFlowBll::UpdateTips").always(0);
    Common::commonInterface()->getGUID();
    services.reset();
    QVERIFY(services.calls().isEmpty());
    QVERIFY(!UI::DMS_UICommon::interface()->hasAdminRole());
    QCOMPARE(UI::DMS_StdCommon::interface()->getCurrentUser().id, 0);
    QCOMPARE(Common::commonInterface()->getGUID(), std::string());
    QVERIFY(DataLib::BLL::Odbpp_JobFlowBll().UpdateTips(1, "t", "g"));
}

KODMS_TEST_MAIN(FakeServicesTest, QApplication)
#include "FakeServicesTest.moc"
