// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Kodms_OrigFileAssignBll.h"
#include "foundation/bll/Kodms_PreCheckAssignBll.h"
#include "foundation/bll/Odbpp_JobBll.h"
#include "foundation/bll/Odbpp_JobCompressBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/bll/Odbpp_OrigFilesBll.h"
#include "foundation/common/DBS_API.h"
#include "services/records/Guid.h"
#include "services/records/bll/FlowRecords.h"
#include "tests/bll/support/RecordsHome.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <functional>

using namespace KODMS;
using namespace KODMS::DataLib;
using Services::Role;
using Tests::TestJob;
using Tests::TestSession;

using Write = std::function<bool(const TestJob &, int user)>;
Q_DECLARE_METATYPE(Write)

/// Two desks that show the same flow; one is faster.
class RacesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theSecondWriteOnAGroupIsRefused_data();
    void theSecondWriteOnAGroupIsRefused();
    void nobodyDeletesWhatAnotherReplaced();
    void nobodyFinishesWhatAnotherReviewed();
    void writesOnDifferentGroupsDoNotDisturb();
    void ownWritesMoveTheVersionOn();
    void aRefreshAllowsTheWrite();
    void whatWasNeverShownIsNotGuarded();
    void theOriginalFileDeskShowsNeitherStateNorRemark();
    void noHalfVerdictBetweenTwoReviewers();
    void signingInAnewForgetsWhatWasShown();
    void nobodyRecordsAFileThatIsBeingRemoved();
    void aFileMarkedForRemovalIsNotRecorded();

private:
    static bool verdict(const TestJob &job, int user, int flag);

    bool recordAgain(int user) const
    {
        return BLL::Odbpp_OrigFilesBll().inputOrigFile(Services::newGuid().toStdString(), "b",
                                                       m_job.storedName, "zip", "A1B", 0, user);
    }

    QVariant jobFlag()
    {
        return m_home.get(QStringLiteral("jobs"), QStringLiteral("check_flag"), 1);
    }

    Tests::RecordsHome m_home;
    TestJob m_job;
    int m_fast = 0;
    int m_slow = 0;
    TestSession *m_fastSession = nullptr;
    TestSession *m_slowSession = nullptr;
};

void RacesTest::init()
{
    m_home.reset();
    m_fast = m_home.addUser(QStringLiteral("fast"), {Role::Admin});
    m_slow = m_home.addUser(QStringLiteral("slow"), {Role::Admin});
    m_job = m_home.addJob(1, 0);
    m_fastSession = &m_home.signIn(m_fast);
    m_slowSession = &m_home.signIn(m_slow);
    m_home.show(*m_fastSession, m_job);
    m_home.show(*m_slowSession, m_job);
    m_home.makeCurrent(*m_fastSession);
}

bool RacesTest::verdict(const TestJob &job, int user, int flag)
{
    const bool stored =
        BLL::Odbpp_JobBll().UpdateCheckFlag(user, flag, flag, job.jobName, job.flowId);
    const bool moved = BLL::Odbpp_JobFlowBll().UpdateState(user, 1, flag, job.flowGuid);
    const bool stamped = BLL::Odbpp_JobFlowBll().UpdatePreImportOrCheckTime(job.flowGuid, user, 0,
                                                                            "", user, "", 0, "");
    return stored && moved && stamped;
}

void RacesTest::theSecondWriteOnAGroupIsRefused_data()
{
    QTest::addColumn<Write>("write");
    QTest::addColumn<QString>("group");
    const QString state = QStringLiteral("状态");
    const QString file = QStringLiteral("文件");
    const QString assignment = QStringLiteral("指派");
    QTest::newRow("state") << Write([](const TestJob &job, int user) {
        return BLL::Odbpp_JobFlowBll().UpdateState(user, 1, 2, job.flowGuid);
    }) << state;
    QTest::newRow("remark") << Write([](const TestJob &job, int user) {
        return BLL::Odbpp_JobFlowBll().UpdateTips(user, "mine", job.flowGuid);
    }) << QStringLiteral("备注");
    QTest::newRow("executor") << Write([](const TestJob &job, int user) {
        return BLL::Kodms_OrigFileAssignBll().AssignOrigFileUpdate(user, job.flowGuid, user);
    }) << assignment;
    QTest::newRow("pre-checker") << Write([](const TestJob &job, int user) {
        return BLL::Kodms_PreCheckAssignBll().s_PreCheckAssign(job.flowGuid, user, user);
    }) << assignment;
    QTest::newRow("original file") << Write([](const TestJob &job, int) {
        return BLL::Odbpp_JobFlowBll().UpdateOrigFileGuid(job.fileGuid, job.flowGuid);
    }) << file;
    QTest::newRow("last import") << Write([](const TestJob &job, int) {
        return BLL::Odbpp_JobFlowBll().UpdateLastOdbppImportMongoFsGuid(job.fileGuid, job.flowGuid);
    }) << file;
    QTest::newRow("row's file") << Write([](const TestJob &job, int user) {
        return BLL::Odbpp_JobCompressBll().UpdateZipUUID_OrigName(job.rowId, job.storedName, user,
                                                                  "renamed");
    }) << file;
}

void RacesTest::theSecondWriteOnAGroupIsRefused()
{
    QFETCH(Write, write);
    QFETCH(QString, group);
    QVERIFY(write(m_job, m_fast));
    m_home.makeCurrent(*m_slowSession);
    const QString before = m_home.dump();
    Tests::NoticeLog log;
    QVERIFY(!write(m_job, m_slow));
    QCOMPARE(m_home.dump(), before);
    QCOMPARE(log.notices.size(), 1);
    QVERIFY2(log.notices[0].text.contains(QStringLiteral("FAST")), qPrintable(log.notices[0].text));
    QVERIFY2(log.notices[0].text.contains(group), qPrintable(log.notices[0].text));
    QCOMPARE(m_home.refusals(), 1);
}

void RacesTest::nobodyDeletesWhatAnotherReplaced()
{
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateOrigFileGuid(m_job.fileGuid, m_job.flowGuid));
    m_home.makeCurrent(*m_slowSession);
    const auto remove = [this] {
        return BLL::Odbpp_JobCompressBll().DelOrigFile(m_job.rowId, m_job.storedName,
                                                       m_job.flowGuid);
    };
    QVERIFY(!remove());
    QVERIFY(m_home.files().names.contains(QString::fromStdString(m_job.storedName)));
    m_home.show(*m_slowSession, m_job);
    QVERIFY(remove());
}

void RacesTest::nobodyFinishesWhatAnotherReviewed()
{
    for (const char *column : {"flow_status", "check_flag"})
        m_home.set(QStringLiteral("job_flows"), QString::fromLatin1(column), 2, m_job.flowId);
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateState(m_fast, 2, 2, m_job.flowGuid));
    m_home.makeCurrent(*m_slowSession);
    QVERIFY(!DBS_API::kodms_update_flow_status(m_job.jobName, 3, 2));
    m_home.show(*m_slowSession, m_job);
    QVERIFY(DBS_API::kodms_update_flow_status(m_job.jobName, 3, 2));
}

void RacesTest::writesOnDifferentGroupsDoNotDisturb()
{
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateTips(m_fast, "remark", m_job.flowGuid));
    m_home.makeCurrent(*m_slowSession);
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateState(m_slow, 1, 2, m_job.flowGuid));
    QVERIFY(BLL::Kodms_PreCheckAssignBll().s_PreCheckAssign(m_job.flowGuid, m_slow, m_slow));
    m_home.makeCurrent(*m_fastSession);
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateOrigFileGuid(m_job.fileGuid, m_job.flowGuid));
}

void RacesTest::ownWritesMoveTheVersionOn()
{
    for (const char *text : {"one", "two", "three"})
        QVERIFY(BLL::Odbpp_JobFlowBll().UpdateTips(m_fast, text, m_job.flowGuid));
    for (const int flag : {1, 2, 1})
        QVERIFY(verdict(m_job, m_fast, flag));
}

void RacesTest::aRefreshAllowsTheWrite()
{
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateTips(m_fast, "fast", m_job.flowGuid));
    m_home.makeCurrent(*m_slowSession);
    QVERIFY(!BLL::Odbpp_JobFlowBll().UpdateTips(m_slow, "slow", m_job.flowGuid));
    m_home.show(*m_slowSession, m_job);
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateTips(m_slow, "slow", m_job.flowGuid));
}

void RacesTest::whatWasNeverShownIsNotGuarded()
{
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateTips(m_fast, "fast", m_job.flowGuid));
    m_home.signIn(m_slow);
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateTips(m_slow, "slow", m_job.flowGuid));
}

void RacesTest::theOriginalFileDeskShowsNeitherStateNorRemark()
{
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateTips(m_fast, "fast", m_job.flowGuid));
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateOrigFileGuid(m_job.fileGuid, m_job.flowGuid));
    const auto flow = Services::FlowRecords(m_home.database()).byId(m_job.flowId);
    m_slowSession->memory.shown({Services::ShownRow::View::OrigFile, m_job.rowId, m_job.flowId,
                                 flow->guid, flow->versions});
    m_home.makeCurrent(*m_slowSession);
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateOrigFileGuid(m_job.fileGuid, m_job.flowGuid));
    QVERIFY(!BLL::Odbpp_JobFlowBll().UpdateTips(m_slow, "slow", m_job.flowGuid));
}

void RacesTest::noHalfVerdictBetweenTwoReviewers()
{
    QVERIFY(BLL::Odbpp_JobBll().UpdateCheckFlag(m_fast, 2, 2, m_job.jobName, m_job.flowId));
    m_home.makeCurrent(*m_slowSession);
    QVERIFY(!verdict(m_job, m_slow, 1));
    QCOMPARE(jobFlag().toInt(), 2);
    m_home.makeCurrent(*m_fastSession);
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateState(m_fast, 1, 2, m_job.flowGuid));
    m_home.makeCurrent(*m_slowSession);
    QVERIFY(!verdict(m_job, m_slow, 1));
    QCOMPARE(jobFlag().toInt(), 2);
    const auto flow = Services::FlowRecords(m_home.database()).byId(m_job.flowId);
    QCOMPARE(flow->state.flag, 2);
    QCOMPARE(flow->check.userId, 0);
}

void RacesTest::signingInAnewForgetsWhatWasShown()
{
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateTips(m_fast, "fast", m_job.flowGuid));
    m_home.makeCurrent(*m_slowSession);
    m_slowSession->memory.clear();
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateTips(m_slow, "slow", m_job.flowGuid));
}

/// The record is gone for everybody while the file still stands in the store.
void RacesTest::nobodyRecordsAFileThatIsBeingRemoved()
{
    bool asked = false;
    bool recorded = true;
    Tests::NoticeLog log;
    m_home.files().meanwhile = [&] {
        asked = true;
        m_home.makeCurrent(*m_slowSession);
        recorded = recordAgain(m_slow);
        m_home.makeCurrent(*m_fastSession);
    };
    QVERIFY(BLL::Odbpp_JobCompressBll().DelOrigFile(m_job.rowId, m_job.storedName, m_job.flowGuid));
    m_home.files().meanwhile = nullptr;
    QVERIFY(asked && !recorded);
    QCOMPARE(log.notices.size(), 1);
    QCOMPARE(m_home.refusals(), 1);
    QCOMPARE(m_home.one(QStringLiteral("SELECT count(*) AS value FROM orig_files")).toInt(), 0);
    m_home.files().names.insert(QString::fromStdString(m_job.storedName));
    QVERIFY2(recordAgain(m_fast), "once it is gone, the name is free");
}

void RacesTest::aFileMarkedForRemovalIsNotRecorded()
{
    m_home.database().run(
        QStringLiteral("INSERT INTO file_delete_marks (stored_name, final, user_id, mark_time) "
                       "VALUES ('leaving.zip', 0, NULL, '2026-01-01T00:00:00.000Z')"));
    m_home.files().names.insert(QStringLiteral("leaving.zip"));
    m_job.storedName = "leaving.zip";
    QVERIFY(!recordAgain(m_fast));
    QCOMPARE(m_home.refusals(), 1);
    m_home.database().run(QStringLiteral("DELETE FROM file_delete_marks"));
    QVERIFY(recordAgain(m_fast));
}

KODMS_TEST_MAIN(RacesTest, QCoreApplication)

#include "RacesTest.moc"
