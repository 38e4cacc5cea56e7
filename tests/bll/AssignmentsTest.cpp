// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Kodms_OrigFileAssignBll.h"
#include "foundation/bll/Kodms_PreCheckAssignBll.h"
#include "services/records/bll/FlowRecords.h"
#include "tests/bll/support/RecordsHome.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QTest>

#include <functional>

using namespace KODMS;
using namespace KODMS::DataLib;
using Services::Role;
using Tests::TestJob;

/// The two assignments follow one set of rules: every test runs for both.
class AssignmentsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void firstAssignment_data() { bothKinds(); }

    void firstAssignment();

    void firstAssignmentOfAnAssignedFlow_data() { bothKinds(); }

    void firstAssignmentOfAnAssignedFlow();

    void samePersonTwiceChangesNothing_data() { bothKinds(); }

    void samePersonTwiceChangesNothing();

    void reassignment_data() { bothKinds(); }

    void reassignment();

    void reassignmentOfAnUnassignedFlow_data() { bothKinds(); }

    void reassignmentOfAnUnassignedFlow();
    void oneKindLeavesTheOtherAlone();
    void whoCannotBeAssigned_data();
    void whoCannotBeAssigned();
    void rowOfAnotherFlow();

    void unknownFlow_data() { bothKinds(); }

    void unknownFlow();

private:
    static void bothKinds();
    bool assign(bool preCheck, int assignee);
    bool reassign(bool preCheck, int assignee);
    int assigned(bool preCheck);

    Tests::RecordsHome m_home;
    TestJob m_job;
    int m_user = 0;
    int m_first = 0;
    int m_second = 0;
};

void AssignmentsTest::bothKinds()
{
    QTest::addColumn<bool>("preCheck");
    QTest::newRow("executor") << false;
    QTest::newRow("pre-checker") << true;
}

void AssignmentsTest::init()
{
    m_home.reset();
    m_user = m_home.addUser(QStringLiteral("admin"), {Role::Admin});
    m_first = m_home.addUser(QStringLiteral("first"));
    m_second = m_home.addUser(QStringLiteral("second"));
    m_job = m_home.addJob();
    m_home.signIn(m_user);
}

bool AssignmentsTest::assign(bool preCheck, int assignee)
{
    if (preCheck)
        return BLL::Kodms_PreCheckAssignBll().s_PreCheckAssign(m_job.flowGuid, m_user, assignee);
    return BLL::Kodms_OrigFileAssignBll().AssignOrigFile(m_job.rowId, m_user, m_job.flowGuid,
                                                         m_user, assignee);
}

bool AssignmentsTest::reassign(bool preCheck, int assignee)
{
    if (preCheck)
        return BLL::Kodms_PreCheckAssignBll().Update_PreCheckAssign(m_job.flowGuid, m_user,
                                                                    assignee);
    return BLL::Kodms_OrigFileAssignBll().AssignOrigFileUpdate(m_user, m_job.flowGuid, assignee);
}

int AssignmentsTest::assigned(bool preCheck)
{
    const auto flow = Services::FlowRecords(m_home.database()).byId(m_job.flowId);
    return preCheck ? flow->checkerId : flow->executorId;
}

void AssignmentsTest::firstAssignment()
{
    QFETCH(bool, preCheck);
    QVERIFY(assign(preCheck, m_first));
    QCOMPARE(assigned(preCheck), m_first);
    const QVariantMap event = m_home.lastEvent();
    QVERIFY(event[QStringLiteral("action")].toString().startsWith(QLatin1String("assignment.")));
    QCOMPARE(event[QStringLiteral("before_value")].toString(), QString());
    QCOMPARE(event[QStringLiteral("after_value")].toString(), QStringLiteral("FIRST"));
}

void AssignmentsTest::firstAssignmentOfAnAssignedFlow()
{
    QFETCH(bool, preCheck);
    QVERIFY(assign(preCheck, m_first));
    Tests::NoticeLog log;
    QVERIFY(!assign(preCheck, m_second));
    QCOMPARE(assigned(preCheck), m_first);
    QCOMPARE(log.notices.size(), 1);
    QVERIFY(log.notices[0].text.contains(QStringLiteral("FIRST")));
    QCOMPARE(m_home.refusals(), 1);
}

void AssignmentsTest::samePersonTwiceChangesNothing()
{
    QFETCH(bool, preCheck);
    QVERIFY(assign(preCheck, m_first));
    const QString before = m_home.dump();
    QVERIFY(assign(preCheck, m_first));
    QVERIFY(reassign(preCheck, m_first));
    QCOMPARE(m_home.dump(), before);
    QCOMPARE(m_home.events(), 1);
}

void AssignmentsTest::reassignment()
{
    QFETCH(bool, preCheck);
    QVERIFY(assign(preCheck, m_first));
    QVERIFY(reassign(preCheck, m_second));
    QCOMPARE(assigned(preCheck), m_second);
    QCOMPARE(m_home.lastEvent()[QStringLiteral("before_value")].toString(),
             QStringLiteral("FIRST"));
}

void AssignmentsTest::reassignmentOfAnUnassignedFlow()
{
    QFETCH(bool, preCheck);
    QVERIFY(reassign(preCheck, m_second));
    QCOMPARE(assigned(preCheck), m_second);
}

void AssignmentsTest::oneKindLeavesTheOtherAlone()
{
    QVERIFY(assign(false, m_first));
    QVERIFY(assign(true, m_second));
    QCOMPARE(assigned(false), m_first);
    QCOMPARE(assigned(true), m_second);
}

void AssignmentsTest::whoCannotBeAssigned_data()
{
    QTest::addColumn<bool>("preCheck");
    QTest::addColumn<int>("assignee");
    for (const bool preCheck : {false, true}) {
        const char *kind = preCheck ? "pre-checker" : "executor";
        QTest::addRow("%s, unknown", kind) << preCheck << 99;
        QTest::addRow("%s, nobody", kind) << preCheck << 0;
        QTest::addRow("%s, negative", kind) << preCheck << -1;
        QTest::addRow("%s, disabled", kind) << preCheck << 3;
    }
}

void AssignmentsTest::whoCannotBeAssigned()
{
    QFETCH(bool, preCheck);
    QFETCH(int, assignee);
    m_home.set(QStringLiteral("users"), QStringLiteral("disabled"), 1, m_second);
    QCOMPARE(m_second, 3);
    for (const bool first : {true, false}) {
        Tests::NoticeLog log;
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("not there or disabled")));
        QVERIFY(!(first ? assign(preCheck, assignee) : reassign(preCheck, assignee)));
        QCOMPARE(log.notices.size(), 1);
    }
    QCOMPARE(assigned(preCheck), 0);
}

void AssignmentsTest::rowOfAnotherFlow()
{
    const TestJob other = m_home.addJob();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("of another flow")));
    QVERIFY(!BLL::Kodms_OrigFileAssignBll().AssignOrigFile(other.rowId, m_user, m_job.flowGuid,
                                                           m_user, m_first));
    QCOMPARE(assigned(false), 0);
}

void AssignmentsTest::unknownFlow()
{
    QFETCH(bool, preCheck);
    m_job.flowGuid = "none";
    for (const bool first : {true, false}) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no such flow")));
        QVERIFY(!(first ? assign(preCheck, m_first) : reassign(preCheck, m_first)));
    }
}

KODMS_TEST_MAIN(AssignmentsTest, QCoreApplication)

#include "AssignmentsTest.moc"
