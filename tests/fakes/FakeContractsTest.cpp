// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Kodms_OrigFileAssignBll.h"
#include "foundation/bll/Kodms_PreCheckAssignBll.h"
#include "foundation/bll/Odbpp_Flow_ViewBll.h"
#include "foundation/bll/Odbpp_JobBll.h"
#include "foundation/bll/Odbpp_JobCompressBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/bll/Odbpp_OrdersBll.h"
#include "foundation/bll/Odbpp_OrigFile_ViewBll.h"
#include "foundation/bll/Odbpp_OrigFilesBll.h"
#include "foundation/bll/Odbpp_QuestionsBll.h"
#include "foundation/bll/User_ViewBll.h"
#include "foundation/common/Common.h"
#include "foundation/common/DBS_API.h"
#include "foundation/common/DMS_Function.h"
#include "foundation/ui/DMS_Import_Widget.h"
#include "foundation/ui/DMS_JobCheck_Widget.h"
#include "foundation/ui/DMS_StdCommon.h"
#include "foundation/ui/DMS_UICommon.h"
#include "tests/fakes/FakeServices.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QTest>

#include <functional>

using namespace KODMS;
using namespace KODMS::DataLib::BLL;
using namespace KODMS::Fakes;
using UI::DMS_StdCommon;
using UI::DMS_UICommon;

/// Every operation of the contract: its call is recorded with the arguments in
/// their places, and it answers what the test said.
class FakeContractsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void everyCallIsRecorded_data();
    void everyCallIsRecorded();
    void everyChangeSucceedsOrFailsAsSaid_data();
    void everyChangeSucceedsOrFailsAsSaid();
    void everyListIsAnsweredWithItsRows();
    void everyRecordIsAnswered();
    void aFolderIsPackedUnderTheNameSaid();
    void everyRightAnswersItsOwnQuestion_data();
    void everyRightAnswersItsOwnQuestion();
    void theImportWindowIsToldTheWholeJob();
};

using Change = std::function<int()>;
using Question = bool (DMS_UICommon::*)();
Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(Question)

namespace {

struct ChangeRow {
    const char *line;
    Change run;
};

/// The operations that only return bool or int.
const std::vector<ChangeRow> &changes()
{
    static const std::vector<ChangeRow> rows = {
        {R"(Odbpp_JobFlowBll::UpdateState(1, 2, 3, "f"))",
         [] { return Odbpp_JobFlowBll().UpdateState(1, 2, 3, "f"); }},
        {R"(Odbpp_JobFlowBll::UpdateTips(1, "t", "f"))",
         [] { return Odbpp_JobFlowBll().UpdateTips(1, "t", "f"); }},
        {R"(Odbpp_JobFlowBll::UpdateOrigFileGuid("o", "f"))",
         [] { return Odbpp_JobFlowBll().UpdateOrigFileGuid("o", "f"); }},
        {R"(Odbpp_JobFlowBll::UpdateLastOdbppImportMongoFsGuid("m", "f"))",
         [] { return Odbpp_JobFlowBll().UpdateLastOdbppImportMongoFsGuid("m", "f"); }},
        {R"(Odbpp_JobFlowBll::UpdatePreImportOrCheckTime("f", 1, 2, "a", 3, "b", 4, "c"))",
         [] {
             return Odbpp_JobFlowBll().UpdatePreImportOrCheckTime("f", 1, 2, "a", 3, "b", 4, "c");
         }},
        {R"(Odbpp_JobBll::UpdateCheckFlag(1, 2, 3, "j", 4))",
         [] { return Odbpp_JobBll().UpdateCheckFlag(1, 2, 3, "j", 4); }},
        {"Odbpp_QuestionsBll::UpdateQuestionStatus(1, 2, 3)",
         [] { return Odbpp_QuestionsBll().UpdateQuestionStatus(1, 2, 3); }},
        {R"(Odbpp_OrigFilesBll::inputOrigFile("g", "b", "s", "t", "c", 1, 2))",
         [] { return Odbpp_OrigFilesBll().inputOrigFile("g", "b", "s", "t", "c", 1, 2); }},
        {R"(Odbpp_JobCompressBll::DelOrigFile(1, "u", "f"))",
         [] { return Odbpp_JobCompressBll().DelOrigFile(1, "u", "f"); }},
        {R"(Odbpp_JobCompressBll::UpdateZipUUID_OrigName(1, "s", 2, "o"))",
         [] { return Odbpp_JobCompressBll().UpdateZipUUID_OrigName(1, "s", 2, "o"); }},
        {R"(Kodms_OrigFileAssignBll::AssignOrigFile(1, 2, "f", 3, 4))",
         [] { return Kodms_OrigFileAssignBll().AssignOrigFile(1, 2, "f", 3, 4); }},
        {R"(Kodms_OrigFileAssignBll::AssignOrigFileUpdate(1, "f", 2))",
         [] { return Kodms_OrigFileAssignBll().AssignOrigFileUpdate(1, "f", 2); }},
        {R"(Kodms_PreCheckAssignBll::s_PreCheckAssign("f", 1, 2))",
         [] { return Kodms_PreCheckAssignBll().s_PreCheckAssign("f", 1, 2); }},
        {R"(Kodms_PreCheckAssignBll::Update_PreCheckAssign("f", 1, 2))",
         [] { return Kodms_PreCheckAssignBll().Update_PreCheckAssign("f", 1, 2); }},
        {R"(DBS_API::kodms_update_flow_status("j", 1, 2))",
         [] { return DBS_API::kodms_update_flow_status("j", 1, 2); }},
        {R"(Common::MongodbPut("d", "b", "p", "s"))",
         [] { return Common::MongodbPut("d", "b", "p", "s"); }},
        {R"(Common::MongodbDel("d", "b", "s"))", [] { return Common::MongodbDel("d", "b", "s"); }},
        {R"(DMS_Function::ExtractorFileFromcompressFile("a", "t", "f"))",
         [] { return DMS_Function::ExtractorFileFromcompressFile(L"a", L"t", L"f"); }},
    };
    return rows;
}

void addCall(const char *line, const Change &run)
{
    QTest::newRow(line) << QString::fromUtf8(line) << run;
}

QString nameIn(const QString &line)
{
    return line.section(QLatin1Char('('), 0, 0);
}

} // namespace

void FakeContractsTest::everyCallIsRecorded_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<Change>("run");
    for (const ChangeRow &change : changes())
        addCall(change.line, change.run);
    addCall(R"(Odbpp_JobFlowBll::select({T: t}, {N: 1}))", [] {
        std::vector<DataLib::Model::Odbpp_JobFlow> rows;
        return Odbpp_JobFlowBll().select({{"T", "t"}}, {{"N", 1}}, rows);
    });
    addCall(R"(Odbpp_QuestionsBll::select({T: t}, {N: 1}))", [] {
        std::vector<DataLib::Model::Odbpp_Questions> rows;
        return Odbpp_QuestionsBll().select({{"T", "t"}}, {{"N", 1}}, rows);
    });
    addCall(R"(User_ViewBll::select({T: t}, {N: 1}))", [] {
        std::vector<DataLib::Model::User_View> rows;
        return User_ViewBll().select({{"T", "t"}}, {{"N", 1}}, rows);
    });
    addCall(R"(Odbpp_JobFlowBll::getFlowByGuid("f"))",
            [] { return Odbpp_JobFlowBll().getFlowByGuid("f").id; });
    addCall(R"(Odbpp_OrdersBll::getOrdersByFlowGuid("f"))",
            [] { return Odbpp_OrdersBll().getOrdersByFlowGuid("f").id; });
    addCall(R"(DBS_API::getWebRobotParaByJobName("j"))",
            [] { return int(DBS_API::getWebRobotParaByJobName("j").size()); });
    addCall("Common::getGUID()", [] { return int(Common::commonInterface()->getGUID().size()); });
    addCall(R"(Common::FoldersCompressSave2MongoDb("f", "s"))", [] {
        std::string name;
        return Common::FoldersCompressSave2MongoDb("f", "s", name);
    });
    addCall(R"(DMS_StdCommon::getFilesFrommogodbUuidTypeOriginName("j", "u", "t"))", [] {
        DMS_StdCommon::getFilesFrommogodbUuidTypeOriginName("j", "u", "t");
        return 0;
    });
    addCall("DMS_UICommon::emitGobalSingal()", [] {
        DMS_UICommon::interface()->emitGobalSingal();
        return 0;
    });
    addCall(R"(DMS_UICommon::importNewJob("p", "j"))", [] {
        DMS_UICommon::interface()->importNewJob(QStringLiteral("p"), QStringLiteral("j"));
        return 0;
    });
    addCall(R"(DMS_UICommon::inputNewJob("j", "p"))", [] {
        DMS_UICommon::interface()->inputNewJob(QStringLiteral("j"), QStringLiteral("p"));
        return 0;
    });
    addCall(R"(DMS_UICommon::sendemitCAMExportJobInfo("j", 7))", [] {
        DMS_UICommon::interface()->sendemitCAMExportJobInfo(QStringLiteral("j"), 7);
        return 0;
    });
    addCall("DMS_Import_Widget::DMS_Import_Widget(1, null)", [] {
        const UI::DMS_Import_Widget window(1, nullptr);
        return 0;
    });
}

void FakeContractsTest::everyCallIsRecorded()
{
    QFETCH(QString, line);
    QFETCH(Change, run);
    run();
    QCOMPARE(FakeServices::instance().operationLines(), QStringList(line));
}

void FakeContractsTest::everyChangeSucceedsOrFailsAsSaid_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Change>("run");
    for (const ChangeRow &change : changes())
        QTest::newRow(change.line) << nameIn(QString::fromUtf8(change.line)) << change.run;
}

/// bool answers come back as 0 and 1, the others as they are.
void FakeContractsTest::everyChangeSucceedsOrFailsAsSaid()
{
    QFETCH(QString, name);
    QFETCH(Change, run);
    const bool isFileStore = name.startsWith(QLatin1String("Common::"));
    QCOMPARE(run(), isFileStore ? 0 : 1);
    auto &result = FakeServices::instance().result(qPrintable(name));
    result.once(1);
    result.once(0);
    QCOMPARE(run(), 1);
    QCOMPARE(run(), 0);
}

void FakeContractsTest::everyListIsAnsweredWithItsRows()
{
    auto &services = FakeServices::instance();
    services.jobFlows.once({{{}, {}}, false});
    services.questions.once({{{}, {}, {}}, false});
    services.users.once({{{4, "张伟", 3, 10}}, false});
    services.origFilePages.once({{{}, {}}, 62, false});
    std::vector<DataLib::Model::Odbpp_JobFlow> flows;
    QVERIFY(!Odbpp_JobFlowBll().select({}, {}, flows));
    QCOMPARE(flows.size(), size_t(2));
    std::vector<DataLib::Model::Odbpp_Questions> questions;
    QVERIFY(!Odbpp_QuestionsBll().select({}, {}, questions));
    QCOMPARE(questions.size(), size_t(3));
    std::vector<DataLib::Model::User_View> users;
    QVERIFY(!User_ViewBll().select({}, {}, users));
    QCOMPARE(users.front().realName, std::string("张伟"));
    ConditionList conditions(2);
    ConditionList countConditions(1);
    std::vector<DataLib::Model::Odbpp_OrigFile_View> files;
    int total = 0;
    QVERIFY(!Odbpp_OrigFile_ViewBll().selectAndCountBySearchModel(conditions, countConditions,
                                                                  files, total));
    QCOMPARE(files.size(), size_t(2));
    QCOMPARE(total, 62);
    const Call call = services.calls().last();
    QCOMPARE(call.name, QStringLiteral("Odbpp_OrigFile_ViewBll::selectAndCountBySearchModel"));
    QCOMPARE(call.arguments.at(0).value<ConditionList>().size(), size_t(2));
    QCOMPARE(call.arguments.at(1).value<ConditionList>().size(), size_t(1));
}

void FakeContractsTest::everyRecordIsAnswered()
{
    auto &services = FakeServices::instance();
    DataLib::Model::Odbpp_JobFlow flow;
    flow.id = 5;
    services.flowByGuid.always(flow);
    DataLib::Model::Odbpp_Orders order;
    order.id = 6;
    services.orders.always(order);
    services.robotParameters.always("p");
    services.config.downloadDir = "/d/";
    QCOMPARE(Odbpp_JobFlowBll().getFlowByGuid("f").id, 5);
    QCOMPARE(Odbpp_OrdersBll().getOrdersByFlowGuid("f").id, 6);
    QCOMPARE(DBS_API::getWebRobotParaByJobName("j"), std::string("p"));
    QCOMPARE(Common::commonInterface()->getConfig().downloadDir, std::string("/d/"));
}

void FakeContractsTest::aFolderIsPackedUnderTheNameSaid()
{
    auto &services = FakeServices::instance();
    services.packedNames.always("packed");
    services.result("Common::FoldersCompressSave2MongoDb").once(-1);
    std::string name;
    QCOMPARE(Common::FoldersCompressSave2MongoDb("f", "s", name), -1);
    QCOMPARE(Common::FoldersCompressSave2MongoDb("f", "s", name), 0);
    QCOMPARE(name, std::string("packed"));
}

void FakeContractsTest::everyRightAnswersItsOwnQuestion_data()
{
    QTest::addColumn<int>("right");
    QTest::addColumn<Question>("question");
    const std::initializer_list<std::tuple<const char *, Right, Question>> rows = {
        {"hasAdminRole", Right::Admin, &DMS_UICommon::hasAdminRole},
        {"hasPreProcessRole", Right::PreProcess, &DMS_UICommon::hasPreProcessRole},
        {"hasPreCheckAssignRole", Right::PreCheckAssign, &DMS_UICommon::hasPreCheckAssignRole},
        {"hasTestAdminRole", Right::TestAdmin, &DMS_UICommon::hasTestAdminRole},
        {"hasCheckAuthority", Right::CheckAuthority, &DMS_UICommon::hasCheckAuthority},
        {"hasOrigFileUpdateAuthority", Right::OrigFileUpdate,
         &DMS_UICommon::hasOrigFileUpdateAuthority},
        {"hasOrigFileAssignRole", Right::OrigFileAssign, &DMS_UICommon::hasOrigFileAssignRole},
        {"hasShowCompanyNameRole", Right::ShowCompanyName, &DMS_UICommon::hasShowCompanyNameRole}};
    for (const auto &row : rows)
        QTest::newRow(std::get<0>(row)) << int(std::get<1>(row)) << std::get<2>(row);
}

void FakeContractsTest::everyRightAnswersItsOwnQuestion()
{
    QFETCH(int, right);
    QFETCH(Question, question);
    auto *hub = DMS_UICommon::interface();
    for (int other = int(Right::Admin); other <= int(Right::ShowCompanyName); ++other) {
        FakeServices::instance().reset();
        FakeServices::instance().grant(static_cast<Right>(other));
        QCOMPARE((hub->*question)(), other == right);
        QCOMPARE(FakeServices::instance().calls().first().name,
                 QStringLiteral("DMS_UICommon::") + QLatin1String(QTest::currentDataTag()));
    }
}

void FakeContractsTest::theImportWindowIsToldTheWholeJob()
{
    UI::DMS_Import_Widget window;
    window.setFlowGuid({QStringLiteral("web"), QStringLiteral("web000001"), QStringLiteral("board"),
                        QStringLiteral("f"), true, QStringLiteral("u.tgz")});
    const auto info =
        FakeServices::instance().calls().last().arguments.first().value<UI::Import_Info>();
    QCOMPARE(info.jobNamePrefix, QStringLiteral("web"));
    QCOMPARE(info.jobName, QStringLiteral("web000001"));
    QCOMPARE(info.origJobName, QStringLiteral("board"));
    QCOMPARE(info.flowGuid, QStringLiteral("f"));
    QVERIFY(info.isWeb);
    QCOMPARE(info.uuid, QStringLiteral("u.tgz"));
}

KODMS_TEST_MAIN(FakeContractsTest, QApplication)
#include "FakeContractsTest.moc"
