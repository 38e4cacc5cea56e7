// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Kodms_OrigFileAssignBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "tests/bll/support/ChangingCases.h"
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

bool holds(const std::vector<Role> &roles, std::optional<Role> role)
{
    return role && std::find(roles.begin(), roles.end(), *role) != roles.end();
}

/// The roles to which a view shows every flow.
bool seesEverything(std::optional<Role> role)
{
    return holds({Role::Admin, Role::TestAdmin, Role::ShowCompanyName}, role);
}

bool isAllowed(const Tests::ChangingCase &one, std::optional<Role> role, bool ownFlow)
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
    for (std::size_t i = 0; i < Tests::changingCases().size(); ++i) {
        for (const auto &role : roles) {
            for (const bool own : {false, true}) {
                const QString name =
                    QStringLiteral("%1, %2, %3")
                        .arg(QLatin1String(Tests::changingCases()[i].name), nameOf(role),
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
    const Tests::ChangingCase &one = Tests::changingCases()[std::size_t(number)];
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
    for (std::size_t i = 0; i < Tests::changingCases().size(); ++i) {
        QStringList kinds{QStringLiteral("nobody"), QStringLiteral("disabled")};
        if (Tests::changingCases()[i].namesUser)
            kinds << QStringLiteral("another's id") << QStringLiteral("id 0");
        for (const QString &kind : qAsConst(kinds))
            QTest::newRow(qPrintable(QLatin1String(Tests::changingCases()[i].name) +
                                     QStringLiteral(", ") + kind))
                << int(i) << kind;
    }
}

void RightsTest::whoIsNotTheActingUserIsRefused()
{
    QFETCH(int, number);
    QFETCH(QString, who);
    const Tests::ChangingCase &one = Tests::changingCases()[std::size_t(number)];
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
    for (const Tests::ChangingCase &one : Tests::changingCases()) {
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
