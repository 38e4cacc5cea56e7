// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/RobotChanges.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "services/records/Guid.h"
#include "services/records/bll/FlowRecords.h"
#include "services/records/bll/StoredFileRecords.h"
#include "tests/bll/support/RecordsHome.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QTest>

using namespace KODMS;
using namespace KODMS::DataLib;
using Services::FlowState;
using Services::Outcome;
using Services::RobotChanges;
using Services::RobotRun;
using Services::Role;
using Tests::TestJob;

/// What the robot's own account does to a flow.
class RobotChangesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void takesFromTheStatesThatLeadThere_data();
    void takesFromTheStatesThatLeadThere();
    void findsTheJobWithoutRegardToCase_data();
    void findsTheJobWithoutRegardToCase();
    void namesThatNameNoSingleJobAreRefused_data();
    void namesThatNameNoSingleJobAreRefused();
    void onlyWebJobsMustBePaid_data();
    void onlyWebJobsMustBePaid();
    void aSecondRobotComesTooLate();
    void takingAgainForgetsTheEarlierResult();
    void theResultIsRecordedAndAudited();
    void theNameOfAPreparedJobStays();
    void aVerdictWaitsForTheResult();
    void whoSawTheFlowBeforeTheResultLooksAgain();
    void aLateResultIsRefused_data();
    void aLateResultIsRefused();
    void aResultThatIsNotStoredIsRefused();
    void whatThisAccountLeftIsFound();

private:
    void rename(const TestJob &job, const QString &name);
    void expectTaken(const QString &name);
    void expectRefused(const Outcome &outcome, const QString &before);
    Outcome deliver(const RobotRun &run, const QString &storedName, const QString &name);

    bool verdict(int flag)
    {
        m_home.signIn(m_reviewer);
        return BLL::Odbpp_JobFlowBll().UpdateState(m_reviewer, 2, flag, m_job.flowGuid);
    }

    QVariant flowValue(const char *column)
    {
        return m_home.get(QStringLiteral("job_flows"), QString::fromLatin1(column), m_job.flowId);
    }

    FlowState state() { return Services::FlowRecords(m_home.database()).byId(m_job.flowId)->state; }

    QString name() const { return QString::fromStdString(m_job.jobName); }

    Tests::RecordsHome m_home;
    TestJob m_job;
    int m_robot = 0;
    int m_reviewer = 0;
};

void RobotChangesTest::init()
{
    m_home.reset();
    m_robot = m_home.addUser(QStringLiteral("robot"), {Role::Robot});
    m_reviewer = m_home.addUser(QStringLiteral("review"), {Role::CheckAuthority});
    m_job = m_home.addJob(1, 2);
    m_home.signIn(m_robot);
}

void RobotChangesTest::rename(const TestJob &job, const QString &name)
{
    Services::SqlQuery query =
        m_home.database().prepare(QStringLiteral("UPDATE jobs SET name = ? WHERE name = ?"));
    query.bind(0, name).bind(1, QString::fromStdString(job.jobName)).exec();
}

Outcome RobotChangesTest::deliver(const RobotRun &run, const QString &storedName,
                                  const QString &name)
{
    m_home.files().names.insert(storedName);
    Services::StoredFileRow file;
    file.guid = Services::newGuid();
    file.baseName = name;
    file.storedName = storedName;
    file.fileType = QStringLiteral("zip");
    return RobotChanges::deliver(run, file, name);
}

void RobotChangesTest::expectTaken(const QString &name)
{
    const auto run = RobotChanges::take(name);
    QVERIFY2(run, qPrintable(run.text()));
    QCOMPARE(run.value.flowId, m_job.flowId);
    QVERIFY((state() == FlowState{2, 0}));
}

/// Nothing changed, and the text says why.
void RobotChangesTest::expectRefused(const Outcome &outcome, const QString &before)
{
    QVERIFY(!outcome);
    QVERIFY(!outcome.text.isEmpty());
    QVERIFY(!outcome.cause.isEmpty());
    QCOMPARE(m_home.dump(), before);
}

void RobotChangesTest::takesFromTheStatesThatLeadThere_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("flag");
    QTest::addColumn<bool>("isTaken");
    for (int status = 0; status <= 3; ++status) {
        for (int flag = 0; flag <= 2; ++flag)
            QTest::newRow(qPrintable(QStringLiteral("status %1, flag %2").arg(status).arg(flag)))
                << status << flag << ((status == 1 && flag == 2) || (status == 2 && flag == 1));
    }
}

void RobotChangesTest::takesFromTheStatesThatLeadThere()
{
    QFETCH(int, status);
    QFETCH(int, flag);
    QFETCH(bool, isTaken);
    m_home.set(QStringLiteral("job_flows"), QStringLiteral("flow_status"), status, m_job.flowId);
    m_home.set(QStringLiteral("job_flows"), QStringLiteral("check_flag"), flag, m_job.flowId);
    const QString before = m_home.dump();
    const auto run = RobotChanges::take(name());
    if (!isTaken) {
        expectRefused(run.outcome, before);
        QCOMPARE(m_home.refusals(), 1);
        return;
    }
    QVERIFY2(run, qPrintable(run.text()));
    QVERIFY((state() == FlowState{2, 0}));
    QCOMPARE(run.value.jobName, name());
    QCOMPARE(run.value.flowGuid.toStdString(), m_job.flowGuid);
    QCOMPARE(run.value.stateVersion, flowValue("state_version").toInt());
    const QVariantMap event = m_home.lastEvent();
    QCOMPARE(event[QStringLiteral("user_id")].toInt(), m_robot);
    QCOMPARE(event[QStringLiteral("action")].toString(), QStringLiteral("state.robotTake"));
    QCOMPARE(event[QStringLiteral("record_name")].toString(), name());
    QCOMPARE(event[QStringLiteral("after_value")].toString(), QStringLiteral("2,0"));
}

void RobotChangesTest::findsTheJobWithoutRegardToCase_data()
{
    QTest::addColumn<QString>("stored");
    QTest::newRow("Latin letters") << QStringLiteral("aBc-01");
    QTest::newRow("letters with marks") << QStringLiteral("ÄÖ-01");
    QTest::newRow("wide letters") << QStringLiteral("ＡＢＣ-01");
    QTest::newRow("Chinese") << QStringLiteral("线路板-A1");
    QTest::newRow("a letter whose lower case is two") << QStringLiteral("İ-01");
    QTest::newRow("what a pattern would read otherwise") << QStringLiteral("A%_*[1]'--");
}

void RobotChangesTest::findsTheJobWithoutRegardToCase()
{
    QFETCH(QString, stored);
    const TestJob other = m_home.addJob(1, 2);
    rename(m_job, stored);
    rename(other, stored + QLatin1Char('1'));
    expectTaken(stored.toLower());
}

void RobotChangesTest::namesThatNameNoSingleJobAreRefused_data()
{
    QTest::addColumn<QString>("asked");
    QTest::newRow("unknown") << QStringLiteral("a1b999999");
    QTest::newRow("empty") << QString();
    QTest::newRow("the beginning of a name") << QStringLiteral("a1b00000");
    QTest::newRow("a pattern") << QStringLiteral("a1b%");
    QTest::newRow("two that differ in case") << QStringLiteral("twin-1");
    QTest::newRow("one of the two, exactly") << QStringLiteral("Twin-1");
    QTest::newRow("too long") << QString(501, QLatin1Char('a'));
    QTest::newRow("with a NUL") << QString(QLatin1String("a1b", 3) + QChar(0));
}

void RobotChangesTest::namesThatNameNoSingleJobAreRefused()
{
    QFETCH(QString, asked);
    rename(m_home.addJob(1, 2), QStringLiteral("Twin-1"));
    rename(m_home.addJob(1, 2), QStringLiteral("TWIN-1"));
    const QString before = m_home.dump();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("state.robotTake")));
    expectRefused(RobotChanges::take(asked).outcome, before);
}

void RobotChangesTest::onlyWebJobsMustBePaid_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("payment"); // -1: no order
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("paid web job") << QStringLiteral("web000001") << 1 << true;
    QTest::newRow("unpaid web job") << QStringLiteral("web000001") << 0 << false;
    QTest::newRow("unpaid, in capitals") << QStringLiteral("WEB_A1") << 0 << false;
    QTest::newRow("web job without an order") << QStringLiteral("web000001") << -1 << false;
    QTest::newRow("another unpaid job") << QStringLiteral("A1B000001") << 0 << true;
    QTest::newRow("web further inside") << QStringLiteral("aweb") << 0 << true;
}

void RobotChangesTest::onlyWebJobsMustBePaid()
{
    QFETCH(QString, stored);
    QFETCH(int, payment);
    QFETCH(bool, isTaken);
    rename(m_job, stored);
    if (payment < 0)
        m_home.database().run(QStringLiteral("DELETE FROM orders"));
    else
        m_home.set(QStringLiteral("orders"), QStringLiteral("payment"), payment, 1);
    const QString before = m_home.dump();
    if (isTaken)
        expectTaken(stored.toLower());
    else
        expectRefused(RobotChanges::take(stored.toLower()).outcome, before);
}

void RobotChangesTest::aSecondRobotComesTooLate()
{
    QVERIFY(RobotChanges::take(name()));
    m_home.signIn(m_home.addUser(QStringLiteral("second"), {Role::Robot}));
    const QString before = m_home.dump();
    expectRefused(RobotChanges::take(name()).outcome, before);
}

/// Also: the session that took the job before is no stranger to it afterwards.
void RobotChangesTest::takingAgainForgetsTheEarlierResult()
{
    Tests::TestSession &robot = m_home.session();
    const auto first = RobotChanges::take(name());
    QVERIFY(deliver(first.value, QStringLiteral("r1.zip"), QStringLiteral("board")));
    QVERIFY(verdict(1));
    m_home.makeCurrent(robot);
    const auto second = RobotChanges::take(name());
    QVERIFY2(second, qPrintable(second.text()));
    QVERIFY(!flowValue("result_file_id").isValid());
    QVERIFY(!flowValue("result_time").isValid());
    QVERIFY(!verdict(2)); // of the first result
    m_home.makeCurrent(robot);
    const QString before = m_home.dump();
    expectRefused(deliver(first.value, QStringLiteral("r2.zip"), QStringLiteral("b")), before);
    QVERIFY(deliver(second.value, QStringLiteral("r3.zip"), QStringLiteral("b")));
}

void RobotChangesTest::theResultIsRecordedAndAudited()
{
    const auto run = RobotChanges::take(name());
    QVERIFY(deliver(run.value, QStringLiteral("result.zip"), QStringLiteral("board_7")));
    QVERIFY((state() == FlowState{2, 0}));
    QCOMPARE(flowValue("orig_job_name").toString(), QStringLiteral("board_7"));
    QVERIFY(!flowValue("result_time").toString().isEmpty());
    QCOMPARE(flowValue("state_version").toInt(), run.value.stateVersion + 1);
    const int file = flowValue("result_file_id").toInt();
    const auto value = [&](const char *column) {
        return m_home.get(QStringLiteral("orig_files"), QString::fromLatin1(column), file)
            .toString();
    };
    QCOMPARE(value("stored_name"), QStringLiteral("result.zip"));
    QCOMPARE(value("base_name"), QStringLiteral("board_7"));
    QCOMPARE(value("file_type"), QStringLiteral("zip"));
    QCOMPARE(value("kind"), QStringLiteral("2"));
    QCOMPARE(value("customer_code"), QStringLiteral("A1B"));
    QCOMPARE(value("create_user_id").toInt(), m_robot);
    // The desks go on with the file that was sent or imported.
    QVERIFY(!flowValue("last_import_file_id").isValid());
    QCOMPARE(flowValue("orig_file_id").toInt(), m_job.fileId);
    const QVariantMap event = m_home.lastEvent();
    QCOMPARE(event[QStringLiteral("action")].toString(), QStringLiteral("state.robotResult"));
    QCOMPARE(event[QStringLiteral("after_value")].toString(), QStringLiteral("result.zip"));
    QCOMPARE(event[QStringLiteral("refused")].toInt(), 0);
}

void RobotChangesTest::theNameOfAPreparedJobStays()
{
    m_home.set(QStringLiteral("job_flows"), QStringLiteral("orig_job_name"),
               QStringLiteral("prepared"), m_job.flowId);
    const auto run = RobotChanges::take(name());
    QVERIFY(deliver(run.value, QStringLiteral("result.zip"), QStringLiteral("board")));
    QCOMPARE(flowValue("orig_job_name").toString(), QStringLiteral("prepared"));
}

void RobotChangesTest::aVerdictWaitsForTheResult()
{
    Tests::TestSession &robot = m_home.session();
    const auto run = RobotChanges::take(name());
    QVERIFY(!verdict(2));
    QVERIFY((state() == FlowState{2, 0}));
    m_home.makeCurrent(robot);
    QVERIFY(deliver(run.value, QStringLiteral("result.zip"), QStringLiteral("board")));
    QVERIFY(verdict(2));
    QVERIFY((state() == FlowState{2, 2}));
}

void RobotChangesTest::whoSawTheFlowBeforeTheResultLooksAgain()
{
    Tests::TestSession &robot = m_home.session();
    const auto run = RobotChanges::take(name());
    Tests::TestSession &reviewer = m_home.signIn(m_reviewer);
    m_home.show(reviewer, m_job);
    m_home.makeCurrent(robot);
    QVERIFY(deliver(run.value, QStringLiteral("result.zip"), QStringLiteral("board")));
    m_home.makeCurrent(reviewer);
    Tests::NoticeLog log;
    QVERIFY(!BLL::Odbpp_JobFlowBll().UpdateState(m_reviewer, 2, 2, m_job.flowGuid));
    QCOMPARE(log.notices.size(), 1);
    QVERIFY2(log.notices[0].text.contains(QStringLiteral("ROBOT")),
             qPrintable(log.notices[0].text));
    m_home.show(reviewer, m_job);
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateState(m_reviewer, 2, 2, m_job.flowGuid));
}

void RobotChangesTest::aLateResultIsRefused_data()
{
    QTest::addColumn<QString>("meanwhile");
    QTest::newRow("delivered already")
        << QStringLiteral("UPDATE job_flows SET result_file_id = orig_file_id");
    QTest::newRow("prepared anew") << QStringLiteral(
        "UPDATE job_flows SET flow_status = 1, check_flag = 0, state_version = 9");
    QTest::newRow("replaced, and at the robot again")
        << QStringLiteral("UPDATE job_flows SET state_version = state_version + 2");
    QTest::newRow("finished") << QStringLiteral(
        "UPDATE job_flows SET flow_status = 3, check_flag = 2");
    QTest::newRow("the account lost the role")
        << QStringLiteral("DELETE FROM user_roles WHERE role = 'robot'");
    QTest::newRow("the account was disabled")
        << QStringLiteral("UPDATE users SET disabled = 1 WHERE login_name = 'robot'");
}

void RobotChangesTest::aLateResultIsRefused()
{
    QFETCH(QString, meanwhile);
    const auto run = RobotChanges::take(name());
    QVERIFY(RobotChanges::mayDeliver(run.value));
    m_home.database().run(meanwhile);
    const QString before = m_home.dump();
    expectRefused(RobotChanges::mayDeliver(run.value), before);
    expectRefused(deliver(run.value, QStringLiteral("late.zip"), QStringLiteral("b")), before);
    QCOMPARE(m_home.refusals(), 2);
}

void RobotChangesTest::aResultThatIsNotStoredIsRefused()
{
    const auto run = RobotChanges::take(name());
    const QString before = m_home.dump();
    Services::StoredFileRow file;
    file.guid = Services::newGuid();
    file.storedName = QStringLiteral("nowhere.zip");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("nowhere.zip")));
    expectRefused(RobotChanges::deliver(run.value, file, QStringLiteral("b")), before);
}

void RobotChangesTest::whatThisAccountLeftIsFound()
{
    Tests::TestSession &robot = m_home.session();
    const auto first = RobotChanges::take(name());
    const TestJob delivered = m_home.addJob(1, 2);
    const TestJob second = m_home.addJob(2, 1);
    const TestJob scenery = m_home.addJob(2, 0); // nobody took it
    const auto done = RobotChanges::take(QString::fromStdString(delivered.jobName));
    QVERIFY(deliver(done.value, QStringLiteral("done.zip"), QStringLiteral("b")));
    QVERIFY(BLL::Odbpp_JobFlowBll().UpdateState(m_robot, 2, 0, second.flowGuid));
    m_home.signIn(m_home.addUser(QStringLiteral("other"), {Role::Robot}));
    const TestJob others = m_home.addJob(1, 2);
    QVERIFY(RobotChanges::take(QString::fromStdString(others.jobName)));
    m_home.makeCurrent(robot);
    const auto left = RobotChanges::unfinished();
    QVERIFY(left);
    QCOMPARE(left.value.size(), std::size_t(2));
    QCOMPARE(left.value[0].flowId, m_job.flowId);
    QCOMPARE(left.value[0].stateVersion, first.value.stateVersion);
    QCOMPARE(left.value[0].jobName, name());
    QCOMPARE(left.value[1].flowId, second.flowId);
    QVERIFY(deliver(left.value[1], QStringLiteral("r.zip"), QStringLiteral("b")));
    m_home.signIn(m_reviewer);
    QVERIFY(!RobotChanges::unfinished());
}

KODMS_TEST_MAIN(RobotChangesTest, QCoreApplication)
#include "RobotChangesTest.moc"
