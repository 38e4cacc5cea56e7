// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Kodms_OrigFileAssignBll.h"
#include "foundation/bll/Kodms_PreCheckAssignBll.h"
#include "foundation/bll/Odbpp_JobBll.h"
#include "foundation/bll/Odbpp_JobCompressBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/bll/Odbpp_OrigFilesBll.h"
#include "foundation/bll/Odbpp_QuestionsBll.h"
#include "foundation/common/DBS_API.h"
#include "services/records/Guid.h"
#include "tests/bll/support/RecordsHome.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <functional>
#include <optional>

using namespace KODMS;
using namespace KODMS::DataLib;
using Services::Role;
using Services::RoleSet;
using Tests::RecordsHome;
using Tests::TestJob;

namespace {

/// One changing operation: who may call it, told once more here, in the test's own
/// words, and how it is called so that nothing but the right can stand in its way.
struct Case {
    const char *name;
    int status;
    int flag;
    std::vector<Role> always;  ///< may do it to every flow
    std::vector<Role> inScope; ///< may do it to flows in their scope
    bool everybodyInScope;
    bool namesUser; ///< the caller passes the acting user
    std::function<bool(const TestJob &, int user)> call;
    std::function<void(RecordsHome &, const TestJob &)> prepare{};
};

const std::vector<Role> reviewers{Role::Admin, Role::CheckAuthority};
const std::vector<Role> filers{Role::Admin, Role::OrigFileUpdate};

void importKos(RecordsHome &home, const TestJob &job)
{
    home.addFile(QStringLiteral("job.kos"), QStringLiteral("kos"));
    home.set(QStringLiteral("job_flows"), QStringLiteral("last_import_file_id"),
             home.one(QStringLiteral("SELECT max(id) AS value FROM orig_files")), job.flowId);
}

void putFile(RecordsHome &home, const TestJob &)
{
    home.files().names.insert(QStringLiteral("new.zip"));
}

bool input(const TestJob &, int user)
{
    return BLL::Odbpp_OrigFilesBll().inputOrigFile(Services::newGuid().toStdString(), "b",
                                                   "new.zip", "zip", "A1B", 0, user);
}

void askQuestion(RecordsHome &home, const TestJob &job)
{
    home.addQuestion(job);
}

bool answerQuestion(const TestJob &, int user)
{
    return BLL::Odbpp_QuestionsBll().UpdateQuestionStatus(1, 2, user);
}

std::vector<Case> stateCases()
{
    const auto state = [](int status, int flag) {
        return [=](const TestJob &job, int user) {
            return BLL::Odbpp_JobFlowBll().UpdateState(user, status, flag, job.flowGuid);
        };
    };
    return {
        {"verdict on an import", 1, 0, reviewers, {}, false, true, state(1, 2)},
        {"verdict on a robot's result", 2, 1, reviewers, {}, false, true, state(2, 2)},
        {"state of an import", 0, 0, {Role::Admin}, {Role::PreProcess}, false, true, state(1, 0)},
        {"state after a kos replacement", 0, 0, filers, {}, false, true, state(1, 2), importKos},
        {"robot takes the job", 1, 2, {Role::Robot}, {}, false, true, state(2, 0)},
        {"finish",
         2,
         2,
         {},
         {},
         true,
         false,
         [](const TestJob &job, int) {
             return DBS_API::kodms_update_flow_status(job.jobName, 3, 2);
         }},
        {"verdict on the job",
         1,
         0,
         reviewers,
         {},
         false,
         true,
         [](const TestJob &job, int user) {
             return BLL::Odbpp_JobBll().UpdateCheckFlag(user, 2, 2, job.jobName, job.flowId);
         }},
        {"review time",
         1,
         2,
         reviewers,
         {},
         false,
         true,
         [](const TestJob &job, int user) {
             return BLL::Odbpp_JobFlowBll().UpdatePreImportOrCheckTime(job.flowGuid, user, 0, "",
                                                                       user, "", 0, "");
         }},
        {"robot review time",
         2,
         2,
         reviewers,
         {},
         false,
         true,
         [](const TestJob &job, int user) {
             return BLL::Odbpp_JobFlowBll().UpdatePreImportOrCheckTime(job.flowGuid, user, 0, "", 0,
                                                                       "", user, "");
         }},
        {"import time", 1, 0, {Role::Admin}, {}, true, true, [](const TestJob &job, int user) {
             return BLL::Odbpp_JobFlowBll().UpdatePreImportOrCheckTime(job.flowGuid, user, user, "",
                                                                       0, "", 0, "");
         }}};
}

std::vector<Case> fileCases()
{
    return {{"record a stored file", 0, 0, filers, {}, false, true, input, putFile},
            {"point the flow at a file",
             0,
             0,
             filers,
             {},
             false,
             false,
             [](const TestJob &job, int) {
                 return BLL::Odbpp_JobFlowBll().UpdateOrigFileGuid(job.fileGuid, job.flowGuid);
             }},
            {"name the last import",
             0,
             0,
             filers,
             {},
             false,
             false,
             [](const TestJob &job, int) {
                 return BLL::Odbpp_JobFlowBll().UpdateLastOdbppImportMongoFsGuid(job.storedName,
                                                                                 job.flowGuid);
             }},
            {"rename the row's file",
             0,
             0,
             filers,
             {},
             false,
             true,
             [](const TestJob &job, int user) {
                 return BLL::Odbpp_JobCompressBll().UpdateZipUUID_OrigName(
                     job.rowId, job.storedName, user, "x");
             }},
            {"delete a file", 0, 0, filers, {}, false, false, [](const TestJob &job, int) {
                 return BLL::Odbpp_JobCompressBll().DelOrigFile(job.rowId, job.storedName,
                                                                job.flowGuid);
             }}};
}

std::vector<Case> workCases()
{
    const std::vector<Role> executors{Role::Admin, Role::OrigFileAssign};
    const std::vector<Role> checkers{Role::Admin, Role::PreCheckAssign};
    return {{"assign an executor",
             0,
             0,
             executors,
             {},
             false,
             true,
             [](const TestJob &job, int user) {
                 return BLL::Kodms_OrigFileAssignBll().AssignOrigFile(job.rowId, user, job.flowGuid,
                                                                      user, 1);
             }},
            {"reassign an executor",
             0,
             0,
             executors,
             {},
             false,
             true,
             [](const TestJob &job, int user) {
                 return BLL::Kodms_OrigFileAssignBll().AssignOrigFileUpdate(user, job.flowGuid, 1);
             }},
            {"assign a pre-checker",
             0,
             0,
             checkers,
             {},
             false,
             true,
             [](const TestJob &job, int user) {
                 return BLL::Kodms_PreCheckAssignBll().s_PreCheckAssign(job.flowGuid, user, 1);
             }},
            {"reassign a pre-checker",
             0,
             0,
             checkers,
             {},
             false,
             true,
             [](const TestJob &job, int user) {
                 return BLL::Kodms_PreCheckAssignBll().Update_PreCheckAssign(job.flowGuid, user, 1);
             }},
            {"remark",
             0,
             0,
             {},
             {},
             true,
             true,
             [](const TestJob &job, int user) {
                 return BLL::Odbpp_JobFlowBll().UpdateTips(user, "new", job.flowGuid);
             }},
            {"state of a question", 0, 0, {}, {}, true, true, answerQuestion, askQuestion}};
}

const std::vector<Case> &cases()
{
    static const std::vector<Case> all = [] {
        std::vector<Case> list = stateCases();
        for (const auto &more : {fileCases(), workCases()})
            list.insert(list.end(), more.begin(), more.end());
        return list;
    }();
    return all;
}

bool holds(const std::vector<Role> &roles, std::optional<Role> role)
{
    return role && std::find(roles.begin(), roles.end(), *role) != roles.end();
}

/// The roles to which a view shows every flow.
bool seesEverything(std::optional<Role> role)
{
    return holds({Role::Admin, Role::TestAdmin, Role::ShowCompanyName}, role);
}

bool isAllowed(const Case &one, std::optional<Role> role, bool ownFlow)
{
    if (holds(one.always, role))
        return true;
    const bool inScope = ownFlow || seesEverything(role);
    return inScope && (one.everybodyInScope || holds(one.inScope, role));
}

QString nameOf(std::optional<Role> role)
{
    return role ? Services::roleName(*role) : QStringLiteral("no role");
}

} // namespace

class RightsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_home.reset(); }

    void eachRoleEachOperation_data();
    void eachRoleEachOperation();
    void whoIsNotTheActingUserIsRefused_data();
    void whoIsNotTheActingUserIsRefused();
    void theExecutorImports();
    void aRoleTakenAwayCountsAtOnce();
    void aCallWithoutAnOpenDatabaseFails();

private:
    void expectRefused(const std::function<bool()> &call);

    RecordsHome m_home;
};

/// False, one notice, an audit row that says so, and not one changed field.
void RightsTest::expectRefused(const std::function<bool()> &call)
{
    const int refusals = m_home.refusals();
    const QString before = m_home.dump();
    Tests::NoticeLog log;
    QVERIFY(!call());
    QCOMPARE(m_home.dump(), before);
    QCOMPARE(log.notices.size(), 1);
    QCOMPARE(log.notices[0].level, int(Services::NoticeLevel::Warning));
    QVERIFY(!log.notices[0].text.isEmpty());
    QCOMPARE(m_home.refusals(), refusals + 1);
}

void RightsTest::eachRoleEachOperation_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("role");
    QTest::addColumn<bool>("ownFlow");
    std::vector<std::optional<Role>> roles{std::nullopt};
    for (const Role role : Services::allRoles())
        roles.emplace_back(role);
    for (std::size_t i = 0; i < cases().size(); ++i) {
        for (const auto &role : roles) {
            for (const bool own : {false, true}) {
                const QString name =
                    QStringLiteral("%1, %2, %3")
                        .arg(QLatin1String(cases()[i].name), nameOf(role),
                             own ? QStringLiteral("own flow") : QStringLiteral("another's flow"));
                QTest::newRow(qPrintable(name)) << int(i) << (role ? int(*role) : -1) << own;
            }
        }
    }
}

void RightsTest::eachRoleEachOperation()
{
    QFETCH(int, number);
    QFETCH(int, role);
    QFETCH(bool, ownFlow);
    const Case &one = cases()[std::size_t(number)];
    const std::optional<Role> held = role < 0 ? std::nullopt : std::optional<Role>(Role(role));
    m_home.addUser(QStringLiteral("assignee"));
    const int user = m_home.addUser(QStringLiteral("somebody"), held ? RoleSet{*held} : RoleSet{});
    const TestJob job = m_home.addJob(one.status, one.flag);
    if (ownFlow)
        m_home.set(QStringLiteral("job_flows"), QStringLiteral("create_user_id"), user, job.flowId);
    if (one.prepare)
        one.prepare(m_home, job);
    m_home.signIn(user);
    const auto call = [&] { return one.call(job, user); };
    if (!isAllowed(one, held, ownFlow)) {
        expectRefused(call);
        QCOMPARE(m_home.lastEvent()[QStringLiteral("user_id")].toInt(), user);
        return;
    }
    Tests::NoticeLog log;
    QVERIFY(call());
    QVERIFY(log.notices.isEmpty());
    QCOMPARE(m_home.refusals(), 0);
    QVERIFY(m_home.events() >= 1);
    QCOMPARE(m_home.lastEvent()[QStringLiteral("user_id")].toInt(), user);
}

void RightsTest::whoIsNotTheActingUserIsRefused_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("who");
    for (std::size_t i = 0; i < cases().size(); ++i) {
        QStringList kinds{QStringLiteral("nobody"), QStringLiteral("disabled")};
        if (cases()[i].namesUser)
            kinds << QStringLiteral("another's id") << QStringLiteral("id 0");
        for (const QString &kind : qAsConst(kinds))
            QTest::newRow(qPrintable(QLatin1String(cases()[i].name) + QStringLiteral(", ") + kind))
                << int(i) << kind;
    }
}

void RightsTest::whoIsNotTheActingUserIsRefused()
{
    QFETCH(int, number);
    QFETCH(QString, who);
    const Case &one = cases()[std::size_t(number)];
    RoleSet everything;
    for (const Role role : Services::allRoles())
        everything.insert(role);
    const int other = m_home.addUser(QStringLiteral("other"), everything);
    const int user = m_home.addUser(QStringLiteral("somebody"), everything);
    const TestJob job = m_home.addJob(one.status, one.flag);
    if (one.prepare)
        one.prepare(m_home, job);
    m_home.signIn(who == QLatin1String("nobody") ? 0 : user);
    if (who == QLatin1String("disabled"))
        m_home.set(QStringLiteral("users"), QStringLiteral("disabled"), 1, user);
    const int named = who == QLatin1String("another's id") ? other
                      : who == QLatin1String("disabled")   ? user
                                                           : 0;
    expectRefused([&] { return one.call(job, named); });
}

void RightsTest::theExecutorImports()
{
    const int executor = m_home.addUser(QStringLiteral("executor"));
    const int creator = m_home.addUser(QStringLiteral("creator"));
    const int admin = m_home.addUser(QStringLiteral("boss"), {Role::Admin});
    const TestJob job = m_home.addJob();
    m_home.set(QStringLiteral("job_flows"), QStringLiteral("create_user_id"), creator, job.flowId);
    m_home.signIn(admin);
    QVERIFY(BLL::Kodms_OrigFileAssignBll().AssignOrigFile(job.rowId, admin, job.flowGuid, admin,
                                                          executor));
    m_home.signIn(creator);
    expectRefused([&] { return BLL::Odbpp_JobFlowBll().UpdateState(creator, 1, 0, job.flowGuid); });
    m_home.signIn(executor);
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateState(executor, 1, 0, job.flowGuid));
}

void RightsTest::aRoleTakenAwayCountsAtOnce()
{
    const int reviewer = m_home.addUser(QStringLiteral("reviewer"), {Role::CheckAuthority});
    const TestJob job = m_home.addJob(1, 0);
    m_home.signIn(reviewer);
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateState(reviewer, 1, 1, job.flowGuid));
    Services::UserRecords(m_home.database()).removeRole(reviewer, Role::CheckAuthority);
    expectRefused(
        [&] { return BLL::Odbpp_JobFlowBll().UpdateState(reviewer, 1, 2, job.flowGuid); });
}

void RightsTest::aCallWithoutAnOpenDatabaseFails()
{
    const TestJob job = m_home.addJob(1, 0);
    Services::RecordContext::setCurrent(nullptr);
    for (const Case &one : cases()) {
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("no database is open")));
        Tests::NoticeLog log;
        QVERIFY2(!one.call(job, 1), one.name);
        QCOMPARE(log.notices.size(), 1);
        QCOMPARE(log.notices[0].level, int(Services::NoticeLevel::Error));
    }
}

KODMS_TEST_MAIN(RightsTest, QCoreApplication)

#include "RightsTest.moc"
