// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_JobBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/bll/Odbpp_QuestionsBll.h"
#include "services/records/Guid.h"
#include "services/records/bll/FlowRecords.h"
#include "services/records/bll/TextArgument.h"
#include "tests/bll/support/RecordsHome.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QTest>

using namespace KODMS;
using namespace KODMS::DataLib;
using Services::Role;
using Tests::TestJob;

/// What the changes of a flow store, and what they leave alone.
class FlowChangesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void stateIsStoredAndAudited();
    void remarkIsStoredAndAudited();
    void remarkIsStoredAsItWasGiven_data();
    void remarkIsStoredAsItWasGiven();
    void aByteOrderMarkIsNoText();
    void remarkThatCannotBeStoredIsRefused_data();
    void remarkThatCannotBeStoredIsRefused();
    void verdictIsStoredOnTheJob();
    void noVerdictIsStoredFor_data();
    void noVerdictIsStoredFor();
    void stampsEachPairOnItsOwn();
    void stampTakesTheGivenTime();
    void stampIsRefused_data();
    void stampIsRefused();
    void aRefusedVerdictLeavesNoReviewTime_data();
    void aRefusedVerdictLeavesNoReviewTime();
    void questionStateIsStoredAndAudited();
    void questionThatIsNotThereOrHasNoSuchState_data();
    void questionThatIsNotThereOrHasNoSuchState();
    void unknownFlows_data();
    void unknownFlows();

private:
    void expectFailure(const std::function<bool()> &call, const char *logged);

    Services::FlowRow flow()
    {
        return *Services::FlowRecords(m_home.database()).byId(m_job.flowId);
    }

    Tests::RecordsHome m_home;
    TestJob m_job;
    int m_user = 0;
};

void FlowChangesTest::init()
{
    m_home.reset();
    m_user = m_home.addUser(QStringLiteral("admin"), {Role::Admin});
    m_job = m_home.addJob(1, 0);
    m_home.signIn(m_user);
}

/// False, one log line, one notice, nothing changed, no audit row.
void FlowChangesTest::expectFailure(const std::function<bool()> &call, const char *logged)
{
    const QString before = m_home.dump();
    Tests::NoticeLog log;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QString::fromUtf8(logged)));
    QVERIFY(!call());
    QCOMPARE(m_home.dump(), before);
    QCOMPARE(log.notices.size(), 1);
    QCOMPARE(log.notices[0].level, int(Services::NoticeLevel::Error));
    QCOMPARE(m_home.events(), 0);
}

void FlowChangesTest::stateIsStoredAndAudited()
{
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateState(m_user, 1, 2, m_job.flowGuid));
    QVERIFY((flow().state == Services::FlowState{1, 2}));
    QCOMPARE(flow().versions.state, 1);
    const QVariantMap event = m_home.lastEvent();
    QCOMPARE(event[QStringLiteral("user_id")].toInt(), m_user);
    QCOMPARE(event[QStringLiteral("action")].toString(), QStringLiteral("state.UpdateState"));
    QCOMPARE(event[QStringLiteral("record_kind")].toString(), QStringLiteral("flow"));
    QCOMPARE(event[QStringLiteral("record_id")].toInt(), m_job.flowId);
    QCOMPARE(event[QStringLiteral("record_name")].toString(),
             QString::fromStdString(m_job.jobName));
    QCOMPARE(event[QStringLiteral("before_value")].toString(), QStringLiteral("1,0"));
    QCOMPARE(event[QStringLiteral("after_value")].toString(), QStringLiteral("1,2"));
    QVERIFY(event[QStringLiteral("create_time")].toString().endsWith(QLatin1Char('Z')));
}

void FlowChangesTest::remarkIsStoredAndAudited()
{
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateTips(m_user, "first", m_job.flowGuid));
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateTips(m_user, "", m_job.flowGuid));
    QCOMPARE(flow().tips, QString());
    QCOMPARE(flow().versions.remark, 2);
    QCOMPARE(m_home.lastEvent()[QStringLiteral("before_value")].toString(),
             QStringLiteral("first"));
    QCOMPARE(m_home.events(), 2);
}

void FlowChangesTest::remarkIsStoredAsItWasGiven_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("Chinese") << QByteArray("孔径请确认");
    QTest::newRow("emoji") << QByteArray("好 😀👩‍🔧");
    QTest::newRow("quotes and a semicolon") << QByteArray("'; DROP TABLE job_flows; --\"");
    QTest::newRow("wildcards") << QByteArray("50%_\\");
    QTest::newRow("line break and tab") << QByteArray("a\nb\tc");
    QTest::newRow("as long as can be") << QByteArray("字").repeated(Services::LongestRemark);
}

void FlowChangesTest::remarkIsStoredAsItWasGiven()
{
    QFETCH(QByteArray, text);
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateTips(m_user, text.toStdString(), m_job.flowGuid));
    QCOMPARE(flow().tips.toUtf8(), text);
}

void FlowChangesTest::aByteOrderMarkIsNoText()
{
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateTips(m_user, "\xef\xbb\xbfx", m_job.flowGuid));
    QCOMPARE(flow().tips, QStringLiteral("x"));
}

void FlowChangesTest::remarkThatCannotBeStoredIsRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("logged");
    QTest::newRow("NUL") << QByteArray("a\0b", 3) << QByteArray("NUL");
    QTest::newRow("invalid UTF-8") << QByteArray("a\xff") << QByteArray("not UTF-8");
    QTest::newRow("cut UTF-8") << QByteArray("a\xe5\xad") << QByteArray("not UTF-8");
    QTest::newRow("overlong form") << QByteArray("\xc0\xaf") << QByteArray("not UTF-8");
    QTest::newRow("one character too long")
        << QByteArray("字").repeated(Services::LongestRemark + 1) << QByteArray("too long");
    QTest::newRow("1 MB") << QByteArray(1000000, 'x') << QByteArray("1000000 bytes is too long");
}

void FlowChangesTest::remarkThatCannotBeStoredIsRefused()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, logged);
    expectFailure(
        [&] {
            return BLL::Odbpp_JobFlowBll().UpdateTips(m_user, text.toStdString(), m_job.flowGuid);
        },
        logged.constData());
}

void FlowChangesTest::verdictIsStoredOnTheJob()
{
    QVERIFY(BLL::Odbpp_JobBll().UpdateCheckFlag(m_user, 1, 1, m_job.jobName, m_job.flowId));
    QCOMPARE(m_home.get(QStringLiteral("jobs"), QStringLiteral("check_flag"), 1).toInt(), 1);
    QCOMPARE(m_home.get(QStringLiteral("jobs"), QStringLiteral("pre_check_flag"), 1).toInt(), 1);
    QVERIFY(BLL::Odbpp_JobBll().UpdateCheckFlag(m_user, 2, 2, m_job.jobName, m_job.flowId));
    QCOMPARE(m_home.lastEvent()[QStringLiteral("before_value")].toString(), QStringLiteral("1,1"));
    QCOMPARE(m_home.lastEvent()[QStringLiteral("after_value")].toString(), QStringLiteral("2,2"));
}

void FlowChangesTest::noVerdictIsStoredFor_data()
{
    QTest::addColumn<int>("preFlag");
    QTest::addColumn<int>("flag");
    QTest::addColumn<QString>("jobName");
    QTest::addColumn<int>("flowId");
    QTest::addColumn<QByteArray>("logged");
    const QString job = QStringLiteral("A1B000001");
    QTest::newRow("unknown flow") << 2 << 2 << job << 99 << QByteArray("no such flow");
    QTest::newRow("another job's name")
        << 2 << 2 << QStringLiteral("A1B000002") << 1 << QByteArray("of another job");
    QTest::newRow("flag 0") << 0 << 0 << job << 1 << QByteArray("no verdict");
    QTest::newRow("flag 3") << 3 << 3 << job << 1 << QByteArray("no verdict");
    QTest::newRow("two different flags") << 1 << 2 << job << 1 << QByteArray("no verdict");
}

void FlowChangesTest::noVerdictIsStoredFor()
{
    QFETCH(int, preFlag);
    QFETCH(int, flag);
    QFETCH(QString, jobName);
    QFETCH(int, flowId);
    QFETCH(QByteArray, logged);
    expectFailure(
        [&] {
            return BLL::Odbpp_JobBll().UpdateCheckFlag(m_user, preFlag, flag, jobName.toStdString(),
                                                       flowId);
        },
        logged.constData());
}

void FlowChangesTest::stampsEachPairOnItsOwn()
{
    BLL::Odbpp_JobFlowBll service;
    QVERIFY(service.UpdateState(m_user, 1, 2, m_job.flowGuid));
    QVERIFY(service.UpdatePreImportOrCheckTime(m_job.flowGuid, m_user, 0, "", m_user, "", 0, ""));
    QCOMPARE(flow().check.userId, m_user);
    QVERIFY(!flow().check.time.isEmpty());
    QCOMPARE(flow().import.userId, 0);
    QCOMPARE(flow().robotCheck.userId, 0);
    const QString checked = flow().check.time;
    QVERIFY(service.UpdatePreImportOrCheckTime(m_job.flowGuid, m_user, m_user, "", 0, "", 0, ""));
    QCOMPARE(flow().import.userId, m_user);
    QCOMPARE(flow().check.time, checked);
    QVERIFY(service.UpdatePreImportOrCheckTime(m_job.flowGuid, m_user, 0, "", 0, "", m_user, ""));
    QCOMPARE(flow().robotCheck.userId, m_user);
}

void FlowChangesTest::stampTakesTheGivenTime()
{
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdatePreImportOrCheckTime(
        m_job.flowGuid, m_user, m_user, "2026-03-01T10:00:00.5+08:00", 0, "", 0, ""));
    QCOMPARE(flow().import.time, QStringLiteral("2026-03-01T02:00:00.500Z"));
}

void FlowChangesTest::stampIsRefused_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<QString>("time");
    QTest::addColumn<QByteArray>("logged");
    QTest::newRow("not a time") << 0 << QStringLiteral("yesterday") << QByteArray("not a time");
    QTest::newRow("no such day") << 0 << QStringLiteral("2026-02-30T00:00:00Z")
                                 << QByteArray("not a time");
    QTest::newRow("in another's name") << 1 << QString() << QByteArray();
}

void FlowChangesTest::stampIsRefused()
{
    QFETCH(int, offset);
    QFETCH(QString, time);
    QFETCH(QByteArray, logged);
    const auto call = [&] {
        return BLL::Odbpp_JobFlowBll().UpdatePreImportOrCheckTime(
            m_job.flowGuid, m_user, m_user + offset, time.toStdString(), 0, "", 0, "");
    };
    if (!logged.isEmpty()) {
        expectFailure(call, logged.constData());
        return;
    }
    QVERIFY(!call());
    QCOMPARE(m_home.refusals(), 1);
    QCOMPARE(flow().import.userId, 0);
}

void FlowChangesTest::aRefusedVerdictLeavesNoReviewTime_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("flag");
    QTest::newRow("not imported yet") << 0 << 0;
    QTest::newRow("robot at work") << 2 << 0;
    QTest::newRow("finished") << 3 << 2;
}

void FlowChangesTest::aRefusedVerdictLeavesNoReviewTime()
{
    QFETCH(int, status);
    QFETCH(int, flag);
    const TestJob job = m_home.addJob(status, flag);
    const QString before = m_home.dump();
    QVERIFY(!BLL::Odbpp_JobBll().UpdateCheckFlag(m_user, 2, 2, job.jobName, job.flowId));
    QVERIFY(!BLL::Odbpp_JobFlowBll().UpdateState(m_user, status, 2, job.flowGuid));
    QVERIFY(!BLL::Odbpp_JobFlowBll().UpdatePreImportOrCheckTime(job.flowGuid, m_user, 0, "", m_user,
                                                                "", 0, ""));
    QCOMPARE(m_home.dump(), before);
    QCOMPARE(m_home.refusals(), 3);
}

void FlowChangesTest::questionStateIsStoredAndAudited()
{
    const int question = m_home.addQuestion(m_job);
    for (const int flag : {2, 3, 0, 1}) {
        QVERIFY(BLL::Odbpp_QuestionsBll().UpdateQuestionStatus(question, flag, m_user));
        const QVariant stored =
            m_home.get(QStringLiteral("questions"), QStringLiteral("check_flag"), question);
        QCOMPARE(stored.toInt(), flag);
    }
    QCOMPARE(m_home.lastEvent()[QStringLiteral("record_kind")].toString(),
             QStringLiteral("question"));
    QCOMPARE(m_home.lastEvent()[QStringLiteral("before_value")].toString(), QStringLiteral("0"));
}

void FlowChangesTest::questionThatIsNotThereOrHasNoSuchState_data()
{
    QTest::addColumn<int>("question");
    QTest::addColumn<int>("flag");
    QTest::addColumn<QByteArray>("logged");
    QTest::newRow("unknown question") << 99 << 2 << QByteArray("no such question");
    QTest::newRow("state 4") << 1 << 4 << QByteArray("no question has state");
    QTest::newRow("state -1") << 1 << -1 << QByteArray("no question has state");
}

void FlowChangesTest::questionThatIsNotThereOrHasNoSuchState()
{
    QFETCH(int, question);
    QFETCH(int, flag);
    QFETCH(QByteArray, logged);
    m_home.addQuestion(m_job);
    expectFailure(
        [&] { return BLL::Odbpp_QuestionsBll().UpdateQuestionStatus(question, flag, m_user); },
        logged.constData());
}

void FlowChangesTest::unknownFlows_data()
{
    QTest::addColumn<QByteArray>("guid");
    QTest::addColumn<QByteArray>("logged");
    QTest::newRow("well formed") << Services::newGuid().toUtf8() << QByteArray("no such flow");
    QTest::newRow("empty") << QByteArray() << QByteArray("no such flow");
    QTest::newRow("quotes") << QByteArray("' OR 1=1 --") << QByteArray("no such flow");
    QTest::newRow("NUL") << QByteArray("\0", 1) << QByteArray("NUL");
    QTest::newRow("invalid UTF-8") << QByteArray("\xff\xfe") << QByteArray("not UTF-8");
    QTest::newRow("1 MB") << QByteArray(1000000, 'a') << QByteArray("too long");
}

void FlowChangesTest::unknownFlows()
{
    QFETCH(QByteArray, guid);
    QFETCH(QByteArray, logged);
    const std::string flowGuid = guid.toStdString();
    BLL::Odbpp_JobFlowBll service;
    expectFailure([&] { return service.UpdateState(m_user, 1, 2, flowGuid); }, logged);
    expectFailure([&] { return service.UpdateTips(m_user, "x", flowGuid); }, logged);
    expectFailure([&] { return service.UpdateOrigFileGuid(m_job.fileGuid, flowGuid); }, logged);
}

KODMS_TEST_MAIN(FlowChangesTest, QCoreApplication)

#include "FlowChangesTest.moc"
