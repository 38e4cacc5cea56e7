// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/Transitions.h"
#include "foundation/bll/Odbpp_JobBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/common/DBS_API.h"
#include "tests/bll/support/RecordsHome.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <algorithm>
#include <optional>

using namespace KODMS;
using namespace KODMS::DataLib;
using Services::FlowState;
using Services::Role;
using Services::RoleSet;
using Tests::TestJob;

namespace {

using States = std::vector<std::pair<int, int>>;

/// The life of a flow, written down once more as plain rows.
struct Line {
    States from; ///< empty: any but the finished one
    States to;
    std::vector<Role> roles;
    bool preProcessInScope;
    bool needsKos;
    bool needsResultFromRobotAtWork;
};

const std::vector<Line> lines{
    {{}, {{1, 0}}, {Role::Admin}, true, false, false},
    {{}, {{1, 2}}, {Role::Admin, Role::OrigFileUpdate}, false, true, false},
    {{{1, 0}, {1, 1}, {1, 2}},
     {{1, 1}, {1, 2}},
     {Role::Admin, Role::CheckAuthority},
     false,
     false,
     false},
    {{{1, 2}, {2, 1}}, {{2, 0}}, {Role::Robot}, false, false, false},
    {{{2, 0}, {2, 1}, {2, 2}},
     {{2, 1}, {2, 2}},
     {Role::Admin, Role::CheckAuthority},
     false,
     false,
     true}};

bool contains(const States &states, FlowState state)
{
    return std::find(states.begin(), states.end(), std::pair(state.status, state.flag)) !=
           states.end();
}

bool isExpected(FlowState from, FlowState to, std::optional<Role> role, bool kos, bool result)
{
    return std::any_of(lines.begin(), lines.end(), [&](const Line &line) {
        const bool starts =
            line.from.empty() ? !(from == FlowState{3, 2}) : contains(line.from, from);
        const bool isFor =
            role && (std::find(line.roles.begin(), line.roles.end(), *role) != line.roles.end() ||
                     (line.preProcessInScope && *role == Role::PreProcess));
        const bool ready = (!line.needsKos || kos) && (!line.needsResultFromRobotAtWork || result ||
                                                       !(from == FlowState{2, 0}));
        return starts && contains(line.to, to) && isFor && ready;
    });
}

std::vector<FlowState> allStates()
{
    std::vector<FlowState> states;
    for (int status = 0; status <= 3; ++status) {
        for (int flag = 0; flag <= 2; ++flag)
            states.push_back({status, flag});
    }
    return states;
}

/// What a caller may ask for, with numbers that are no state at all.
std::vector<FlowState> allTargets()
{
    std::vector<FlowState> targets = allStates();
    for (const FlowState odd :
         {FlowState{-1, 0}, FlowState{4, 0}, FlowState{1, 3}, FlowState{1, -1}, FlowState{3, 3}})
        targets.push_back(odd);
    return targets;
}

std::vector<std::optional<Role>> allHolders()
{
    std::vector<std::optional<Role>> holders{std::nullopt};
    for (const Role role : Services::allRoles())
        holders.emplace_back(role);
    return holders;
}

QString textOf(FlowState state)
{
    return QStringLiteral("(%1,%2)").arg(state.status).arg(state.flag);
}

} // namespace

/// Every pair of states, for every role, with and without what a step waits for.
class TransitionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_home.reset(); }

    void everyPairOfStates_data();
    void everyPairOfStates();
    void finishingIsAWayOfItsOwn_data();
    void finishingIsAWayOfItsOwn();
    void theRobotBeginsAnewWithoutAResult();
    void aLastImportThatLeftTheStoreIsNoKos();
    void verdictFollowsTheSameRule_data();
    void verdictFollowsTheSameRule();

private:
    void place(const TestJob &job, FlowState state);
    void give(const TestJob &job, bool kos, bool result);
    bool matchesTable(FlowState from, std::optional<Role> role, int user, const TestJob &job,
                      bool kos, bool result);

    Tests::RecordsHome m_home;
};

void TransitionsTest::place(const TestJob &job, FlowState state)
{
    m_home.set(QStringLiteral("job_flows"), QStringLiteral("flow_status"), state.status,
               job.flowId);
    m_home.set(QStringLiteral("job_flows"), QStringLiteral("check_flag"), state.flag, job.flowId);
}

void TransitionsTest::give(const TestJob &job, bool kos, bool result)
{
    const QVariant file =
        m_home.one(QStringLiteral("SELECT id AS value FROM orig_files WHERE file_type = 'kos'"));
    const auto set = [&](const char *column, bool given) {
        m_home.set(QStringLiteral("job_flows"), QString::fromLatin1(column),
                   given ? file : QVariant(), job.flowId);
    };
    set("last_import_file_id", kos);
    set("result_file_id", result);
}

void TransitionsTest::everyPairOfStates_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("flag");
    QTest::addColumn<int>("role");
    for (const FlowState from : allStates()) {
        for (const auto &role : allHolders()) {
            const QString name = role ? Services::roleName(*role) : QStringLiteral("no role");
            QTest::newRow(qPrintable(textOf(from) + QStringLiteral(", ") + name))
                << from.status << from.flag << (role ? int(*role) : -1);
        }
    }
}

bool TransitionsTest::matchesTable(FlowState from, std::optional<Role> role, int user,
                                   const TestJob &job, bool kos, bool result)
{
    for (const FlowState to : allTargets()) {
        place(job, from);
        give(job, kos, result);
        const bool moved =
            BLL::Odbpp_JobFlowBll().UpdateState(user, to.status, to.flag, job.flowGuid);
        const FlowState now{
            m_home.get(QStringLiteral("job_flows"), QStringLiteral("flow_status"), job.flowId)
                .toInt(),
            m_home.get(QStringLiteral("job_flows"), QStringLiteral("check_flag"), job.flowId)
                .toInt()};
        const bool expected = isExpected(from, to, role, kos, result);
        if (moved == expected && now == (expected ? to : from))
            continue;
        qInfo().noquote() << "to" << textOf(to) << "kos" << kos << "result" << result << "moved"
                          << moved << "stands at" << textOf(now);
        return false;
    }
    return true;
}

void TransitionsTest::everyPairOfStates()
{
    QFETCH(int, status);
    QFETCH(int, flag);
    QFETCH(int, role);
    const std::optional<Role> held = role < 0 ? std::nullopt : std::optional<Role>(Role(role));
    const int user = m_home.addUser(QStringLiteral("somebody"), held ? RoleSet{*held} : RoleSet{});
    const TestJob job = m_home.addJob();
    m_home.addFile(QStringLiteral("job.kos"), QStringLiteral("kos"));
    m_home.set(QStringLiteral("jobs"), QStringLiteral("create_user_id"), user, 1); // in scope
    m_home.signIn(user);
    QVERIFY(matchesTable({status, flag}, held, user, job, false, false));
    QVERIFY(matchesTable({status, flag}, held, user, job, true, false));
    QVERIFY(matchesTable({status, flag}, held, user, job, false, true));
}

void TransitionsTest::finishingIsAWayOfItsOwn_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("flag");
    for (const FlowState from : allStates())
        QTest::newRow(qPrintable(textOf(from))) << from.status << from.flag;
}

void TransitionsTest::finishingIsAWayOfItsOwn()
{
    QFETCH(int, status);
    QFETCH(int, flag);
    const int user = m_home.addUser(QStringLiteral("somebody"));
    const TestJob job = m_home.addJob();
    m_home.set(QStringLiteral("job_flows"), QStringLiteral("create_user_id"), user, job.flowId);
    m_home.signIn(user);
    for (const FlowState to : allTargets()) {
        place(job, {status, flag});
        const bool expected = status == 2 && flag == 2 && to == FlowState{3, 2};
        Tests::NoticeLog log;
        QCOMPARE(DBS_API::kodms_update_flow_status(job.jobName, to.status, to.flag), expected);
        QCOMPARE(log.notices.size(), expected ? 0 : 1);
    }
}

void TransitionsTest::theRobotBeginsAnewWithoutAResult()
{
    const int robot = m_home.addUser(QStringLiteral("robot"), {Role::Robot});
    const int reviewer = m_home.addUser(QStringLiteral("reviewer"), {Role::CheckAuthority});
    const TestJob job = m_home.addJob(2, 1);
    m_home.addFile(QStringLiteral("job.kos"), QStringLiteral("kos"));
    give(job, false, true);
    m_home.signIn(robot);
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateState(robot, 2, 0, job.flowGuid));
    m_home.signIn(reviewer);
    QVERIFY(!BLL::Odbpp_JobFlowBll().UpdateState(reviewer, 2, 2, job.flowGuid));
    give(job, false, true);
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateState(reviewer, 2, 2, job.flowGuid));
}

void TransitionsTest::aLastImportThatLeftTheStoreIsNoKos()
{
    const int user = m_home.addUser(QStringLiteral("files"), {Role::OrigFileUpdate});
    const TestJob job = m_home.addJob();
    m_home.addFile(QStringLiteral("job.kos"), QStringLiteral("kos"));
    give(job, true, false);
    m_home.files().names.remove(QStringLiteral("job.kos"));
    m_home.signIn(user);
    QVERIFY(!BLL::Odbpp_JobFlowBll().UpdateState(user, 1, 2, job.flowGuid));
}

void TransitionsTest::verdictFollowsTheSameRule_data()
{
    finishingIsAWayOfItsOwn_data();
}

void TransitionsTest::verdictFollowsTheSameRule()
{
    QFETCH(int, status);
    QFETCH(int, flag);
    const int user = m_home.addUser(QStringLiteral("reviewer"), {Role::CheckAuthority});
    const TestJob job = m_home.addJob();
    m_home.addFile(QStringLiteral("job.kos"), QStringLiteral("kos"));
    m_home.signIn(user);
    for (const bool result : {false, true}) {
        for (const int verdict : {1, 2}) {
            place(job, {status, flag});
            give(job, true, result);
            const QString before = m_home.dump();
            const bool expected =
                isExpected({status, flag}, {status, verdict}, Role::CheckAuthority, false, result);
            QCOMPARE(BLL::Odbpp_JobBll().UpdateCheckFlag(user, verdict, verdict, job.jobName,
                                                         job.flowId),
                     expected);
            QCOMPARE(m_home.dump() == before, !expected);
        }
    }
}

KODMS_TEST_MAIN(TransitionsTest, QCoreApplication)

#include "TransitionsTest.moc"
