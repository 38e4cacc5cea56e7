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
#include "foundation/common/KODMS_Config.h"
#include "foundation/ui/DMS_Import_Widget.h"
#include "foundation/ui/DMS_JobCheck_Widget.h"
#include "foundation/ui/DMS_StdCommon.h"
#include "foundation/ui/DMS_UICommon.h"
#include "foundation/ui/Temp_Widget.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QMetaMethod>
#include <QTest>

#include <array>
#include <cstring>
#include <functional>
#include <new>
#include <type_traits>

using namespace KODMS;
using namespace KODMS::DataLib::BLL;
using namespace KODMS::DataLib::Model;

/// Records, signatures and signals exactly as desks, hosts and other service
/// libraries are compiled against them.
class ContractsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void recordFieldsStandInOrder();
    void numbersStartAtZero();
    void recordsAreValues();
    void aRecordIsPersistentOnceItHasAnId();
    void theHubsSignalsComeInOrder();
    void theImportWindowHasTwoSignals();
};

namespace {

using std::string;
using Texts = std::map<string, string>;
using Numbers = std::map<string, int>;

template <typename Service, typename Operation, typename Result, typename... Arguments>
constexpr bool member = std::is_same_v<Operation, Result (Service::*)(Arguments...)>;

template <typename Operation, typename Result, typename... Arguments>
constexpr bool function = std::is_same_v<Operation, Result (*)(Arguments...)>;

#define MEMBER(service, operation, ...)                                                            \
    static_assert(member<service, decltype(&service::operation), __VA_ARGS__>, #operation)
#define FUNCTION(operation, ...)                                                                   \
    static_assert(function<decltype(&operation), __VA_ARGS__>, #operation)

using Conditions = std::vector<DB_Search>;
MEMBER(Odbpp_Flow_ViewBll, selectAndCountBySearchModel, bool, Conditions &, Conditions &,
       std::vector<Odbpp_Flow_View> &, int &);
MEMBER(Odbpp_OrigFile_ViewBll, selectAndCountBySearchModel, bool, Conditions &, Conditions &,
       std::vector<Odbpp_OrigFile_View> &, int &);
MEMBER(Odbpp_JobFlowBll, select, bool, const Texts &, const Numbers &,
       std::vector<Odbpp_JobFlow> &);
MEMBER(Odbpp_JobFlowBll, getFlowByGuid, Odbpp_JobFlow, string);
MEMBER(Odbpp_JobFlowBll, UpdateState, bool, int, int, int, string);
MEMBER(Odbpp_JobFlowBll, UpdateTips, bool, int, string, string);
MEMBER(Odbpp_JobFlowBll, UpdateOrigFileGuid, bool, string, string);
MEMBER(Odbpp_JobFlowBll, UpdateLastOdbppImportMongoFsGuid, bool, string, string);
MEMBER(Odbpp_JobFlowBll, UpdatePreImportOrCheckTime, bool, string, int, int, string, int, string,
       int, string);
MEMBER(Odbpp_JobBll, UpdateCheckFlag, bool, int, int, int, string, int);
MEMBER(Odbpp_QuestionsBll, select, bool, const Texts &, const Numbers &,
       std::vector<Odbpp_Questions> &);
MEMBER(Odbpp_QuestionsBll, UpdateQuestionStatus, bool, int, int, int);
MEMBER(Odbpp_OrdersBll, getOrdersByFlowGuid, Odbpp_Orders, string);
MEMBER(Odbpp_OrigFilesBll, inputOrigFile, bool, string, string, string, string, string, int, int);
MEMBER(Odbpp_JobCompressBll, DelOrigFile, bool, int, string, string);
MEMBER(Odbpp_JobCompressBll, UpdateZipUUID_OrigName, bool, int, string, int, string);
MEMBER(User_ViewBll, select, bool, const Texts &, const Numbers &, std::vector<User_View> &);
MEMBER(Kodms_OrigFileAssignBll, AssignOrigFile, bool, int, int, string, int, int);
MEMBER(Kodms_OrigFileAssignBll, AssignOrigFileUpdate, bool, int, string, int);
MEMBER(Kodms_PreCheckAssignBll, s_PreCheckAssign, bool, string, int, int);
MEMBER(Kodms_PreCheckAssignBll, Update_PreCheckAssign, bool, string, int, int);

FUNCTION(Common::commonInterface, Common *);
MEMBER(Common, getConfig, KODMS_Config);
MEMBER(Common, getGUID, string);
FUNCTION(Common::MongodbPut, int, const string &, const string &, const string &, const string &);
FUNCTION(Common::MongodbDel, int, const string &, const string &, const string &);
FUNCTION(Common::FoldersCompressSave2MongoDb, int, const string &, const string &, string &);
FUNCTION(DMS_Function::ExtractorFileFromcompressFile, int, std::wstring, std::wstring,
         std::wstring);
FUNCTION(DBS_API::kodms_update_flow_status, bool, string, int, int);
FUNCTION(DBS_API::getWebRobotParaByJobName, string, string);

using UI::DMS_Import_Widget;
using UI::DMS_JobCheck_Widget;
using UI::DMS_StdCommon;
using UI::DMS_UICommon;
using UI::Temp_Widget;
FUNCTION(DMS_UICommon::interface, DMS_UICommon *);
MEMBER(DMS_UICommon, hasAdminRole, bool);
MEMBER(DMS_UICommon, hasPreProcessRole, bool);
MEMBER(DMS_UICommon, hasPreCheckAssignRole, bool);
MEMBER(DMS_UICommon, hasTestAdminRole, bool);
MEMBER(DMS_UICommon, hasCheckAuthority, bool);
MEMBER(DMS_UICommon, hasOrigFileUpdateAuthority, bool);
MEMBER(DMS_UICommon, hasOrigFileAssignRole, bool);
MEMBER(DMS_UICommon, hasShowCompanyNameRole, bool);
MEMBER(DMS_UICommon, emitGobalSingal, void);
MEMBER(DMS_UICommon, importNewJob, void, const QString &, const QString &);
MEMBER(DMS_UICommon, inputNewJob, void, const QString &, const QString &);
MEMBER(DMS_UICommon, sendemitCAMExportJobInfo, void, const QString &, int);
FUNCTION(DMS_StdCommon::interface, DMS_StdCommon *);
MEMBER(DMS_StdCommon, getCurrentUser, Kodms_User);
FUNCTION(DMS_StdCommon::getFilesFrommogodbUuidTypeOriginName, void, string, string, string);

MEMBER(DMS_JobCheck_Widget, getQuestionData, void);
MEMBER(DMS_Import_Widget, setFlowGuid, void, const UI::Import_Info &);
static_assert(std::is_constructible_v<DMS_JobCheck_Widget, int, bool, QWidget *>);
static_assert(std::is_same_v<decltype(DMS_JobCheck_Widget::m_id), int>);
static_assert(std::is_constructible_v<DMS_Import_Widget>);
static_assert(std::is_constructible_v<DMS_Import_Widget, QWidget *>);
static_assert(std::is_constructible_v<DMS_Import_Widget, int, QWidget *>);
static_assert(!std::is_convertible_v<QWidget *, DMS_Import_Widget>);
static_assert(std::is_constructible_v<Temp_Widget, QWidget *>);
static_assert(std::is_base_of_v<QWidget, Temp_Widget>);

static_assert(std::is_base_of_v<BaseInt, Odbpp_JobFlow>);
static_assert(std::is_base_of_v<BaseInt, Odbpp_Orders>);
static_assert(std::is_base_of_v<BaseInt, Odbpp_Questions>);

/// True when the fields stand in memory, and so in the record, in this order.
template <typename... Fields> bool inOrder(const Fields &...fields)
{
    const std::array<const void *, sizeof...(fields)> places{&fields...};
    for (std::size_t field = 1; field < places.size(); ++field)
        if (!std::less<const void *>()(places[field - 1], places[field]))
            return false;
    return true;
}

/// Runs `check` on a record that was made in memory full of ones.
template <typename Record, typename Check> void onFreshRecord(Check check)
{
    alignas(Record) unsigned char memory[sizeof(Record)];
    std::memset(memory, 0xff, sizeof memory);
    auto *record = new (memory) Record;
    check(*record);
    record->~Record();
}

template <typename Record> constexpr bool isValue()
{
    return std::is_default_constructible_v<Record> && std::is_copy_constructible_v<Record> &&
           std::is_copy_assignable_v<Record> && std::is_nothrow_move_constructible_v<Record>;
}

QStringList signalsOf(const QMetaObject &meta)
{
    QStringList found;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        if (meta.method(index).methodType() == QMetaMethod::Signal)
            found << QString::fromLatin1(meta.method(index).methodSignature());
    return found;
}

} // namespace

void ContractsTest::recordFieldsStandInOrder()
{
    const Kodms_User user;
    QVERIFY(inOrder(user.id, user.loginName, user.realName, user.department, user.post));
    const User_View view;
    QVERIFY(inOrder(view.id, view.realName, view.department, view.post));
    const DB_Search s;
    QVERIFY(inOrder(s.openBracket, s.closeBracket, s.orWithPrevious, s.fuzzy, s.fieldName, s.value,
                    s.relation, s.pageEnabled, s.pageStart, s.pageSize, s.sortEnabled, s.sortField,
                    s.sortDirection, s.numericValue));
    const Odbpp_Flow_View f;
    QVERIFY(inOrder(f.id, f.jobName, f.origJobName, f.origUploadTime, f.odbppUploadTime,
                    f.odbppUploaded, f.layerCount, f.featureCount, f.flowStatus, f.checkFlag,
                    f.preCheckTime, f.flowGuid, f.preUserRealName, f.preCheckUserRealName,
                    f.preCheckUserId, f.tips, f.uuid, f.webFlag, f.orderSuffix, f.origFileSuffix,
                    f.batchNumber));
    const Odbpp_OrigFile_View o;
    QVERIFY(inOrder(o.origName, o.koName, o.koCode, o.fileType, o.jobSerialNumber, o.uuid, o.id,
                    o.fileDescription, o.fileTips, o.flowGuid, o.superiorCo1, o.superiorCo2,
                    o.updateTime, o.createTime, o.preUserRealName, o.preUserId));
    const Odbpp_JobFlow flow;
    QVERIFY(inOrder(flow.id, flow.jobName, flow.flowGuid, flow.flowStatus, flow.checkFlag,
                    flow.createUserId, flow.origFileGuid));
    const Odbpp_Orders order;
    QVERIFY(inOrder(order.id, order.flowGuid, order.payment, order.suffix));
    const Odbpp_Questions q;
    QVERIFY(inOrder(q.id, q.jobId, q.title, q.description, q.checkFlag));
    const KODMS_Config c;
    QVERIFY(inOrder(c.fileStoreDb, c.fileStoreBucket, c.stagingDir, c.downloadDir, c.robotHost,
                    c.robotPort));
    const UI::Import_Info i;
    QVERIFY(inOrder(i.jobNamePrefix, i.jobName, i.origJobName, i.flowGuid, i.isWeb, i.uuid));
}

void ContractsTest::numbersStartAtZero()
{
    const auto zero = [](std::initializer_list<int> numbers) {
        for (const int number : numbers)
            QCOMPARE(number, 0);
    };
    onFreshRecord<Kodms_User>([&](const auto &r) { zero({r.id, r.department, r.post}); });
    onFreshRecord<User_View>([&](const auto &r) { zero({r.id, r.department, r.post}); });
    onFreshRecord<DB_Search>([&](const auto &r) {
        zero({r.openBracket, r.closeBracket, r.orWithPrevious, r.fuzzy, r.relation, r.pageEnabled,
              r.sortEnabled, r.sortDirection, r.numericValue});
    });
    onFreshRecord<Odbpp_Flow_View>([&](const auto &r) {
        zero({r.id, r.odbppUploaded, r.layerCount, r.featureCount, r.flowStatus, r.checkFlag,
              r.preCheckUserId, r.webFlag, r.batchNumber});
    });
    onFreshRecord<Odbpp_OrigFile_View>([&](const auto &r) {
        zero({r.jobSerialNumber, r.id, r.preUserId});
    });
    onFreshRecord<Odbpp_JobFlow>([&](const auto &r) {
        zero({r.id, r.flowStatus, r.checkFlag, r.createUserId});
    });
    onFreshRecord<Odbpp_Orders>([&](const auto &r) { zero({r.id, r.payment}); });
    onFreshRecord<Odbpp_Questions>([&](const auto &r) { zero({r.id, r.jobId, r.checkFlag}); });
    onFreshRecord<KODMS_Config>([&](const auto &r) { zero({r.robotPort}); });
    onFreshRecord<UI::Import_Info>([&](const auto &r) { zero({r.isWeb}); });
}

void ContractsTest::recordsAreValues()
{
    QVERIFY((isValue<DB_Search>() && isValue<Kodms_User>() && isValue<User_View>()));
    QVERIFY((isValue<Odbpp_Flow_View>() && isValue<Odbpp_OrigFile_View>()));
    QVERIFY((isValue<Odbpp_JobFlow>() && isValue<Odbpp_Orders>() && isValue<Odbpp_Questions>()));
    QVERIFY((isValue<KODMS_Config>() && isValue<UI::Import_Info>()));
    QVERIFY((std::is_default_constructible_v<Odbpp_JobFlowBll> &&
             std::is_default_constructible_v<Odbpp_Flow_ViewBll> &&
             std::is_default_constructible_v<Kodms_PreCheckAssignBll>));
    QVERIFY(
        (!std::is_copy_constructible_v<Common> && !std::is_copy_constructible_v<DMS_StdCommon>));
}

void ContractsTest::aRecordIsPersistentOnceItHasAnId()
{
    Odbpp_JobFlow flow;
    const BaseInt &base = flow;
    QVERIFY(!base.isPersist());
    flow.id = 1;
    QVERIFY(base.isPersist());
    QVERIFY(std::has_virtual_destructor_v<BaseInt>);
}

void ContractsTest::theHubsSignalsComeInOrder()
{
    QCOMPARE(signalsOf(DMS_UICommon::staticMetaObject),
             QStringList({QStringLiteral("refreshOrigFileTable()"),
                          QStringLiteral("refreshExportJobTable()"),
                          QStringLiteral("serviceNotice(int,QString)"),
                          QStringLiteral("camImportRequested(QString,QString)"),
                          QStringLiteral("camInputRequested(QString,QString)"),
                          QStringLiteral("camExportRequested(QString,int)")}));
}

void ContractsTest::theImportWindowHasTwoSignals()
{
    QCOMPARE(
        signalsOf(DMS_Import_Widget::staticMetaObject),
        QStringList({QStringLiteral("webJobHaveSent()"), QStringLiteral("robotImportComplete()")}));
    QVERIFY(signalsOf(DMS_JobCheck_Widget::staticMetaObject).isEmpty());
}

KODMS_TEST_MAIN(ContractsTest, QCoreApplication)
#include "ContractsTest.moc"
