// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/bll/Odbpp_OrdersBll.h"
#include "foundation/bll/Odbpp_QuestionsBll.h"
#include "foundation/bll/User_ViewBll.h"
#include "foundation/common/DBS_API.h"
#include "tests/bll/support/RecordsHome.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QTest>

using namespace KODMS;
using namespace KODMS::DataLib;
using Tests::TestJob;

using Texts = std::map<std::string, std::string>;
using Numbers = std::map<std::string, int>;

/// What the services read, and what they say when there is nothing.
class ReadingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void flowsByEachKey();
    void flowByGuid();
    void questionsOfAJobInOrder();
    void usersByNameWithoutTheDisabled();
    void orderOfAFlow();
    void robotParameters();
    void nothingFoundIsNoFailure();
    void unknownKeysAreRefused_data();
    void unknownKeysAreRefused();
    void awkwardValuesMatchNothing_data();
    void awkwardValuesMatchNothing();
    void nobodyReadsNothing();
    void anySignedInUserReadsByKey();

private:
    Tests::RecordsHome m_home;
    TestJob m_first;
    TestJob m_second;
    int m_user = 0;
};

void ReadingTest::init()
{
    m_home.reset();
    m_user = m_home.addUser(QStringLiteral("ordinary"));
    m_first = m_home.addJob(1, 2);
    m_second = m_home.addJob(0, 0);
    m_home.signIn(m_user);
}

void ReadingTest::flowsByEachKey()
{
    m_home.set(QStringLiteral("job_flows"), QStringLiteral("create_user_id"), m_user,
               m_first.flowId);
    const auto found = [](const Texts &texts, const Numbers &numbers) {
        std::vector<Model::Odbpp_JobFlow> rows(3);
        return BLL::Odbpp_JobFlowBll().select(texts, numbers, rows) ? int(rows.size()) : -1;
    };
    QCOMPARE(found({}, {}), 2);
    QCOMPARE(found({{"FlowGUID", m_first.flowGuid}}, {}), 1);
    QCOMPARE(found({{"JobName", m_second.jobName}}, {}), 1);
    QCOMPARE(found({{"OrigFileGuid", m_second.fileGuid}}, {}), 1);
    QCOMPARE(found({}, {{"Id", m_first.flowId}}), 1);
    QCOMPARE(found({}, {{"FlowStatus", 1}, {"CheckFlag", 2}}), 1);
    QCOMPARE(found({}, {{"FlowStatus", 1}, {"CheckFlag", 0}}), 0);
    QCOMPARE(found({}, {{"CreateUserId", m_user}}), 1);
    QCOMPARE(found({{"FlowGUID", m_first.flowGuid}}, {{"Id", m_second.flowId}}), 0);
}

void ReadingTest::flowByGuid()
{
    const auto flow = BLL::Odbpp_JobFlowBll().getFlowByGuid(m_first.flowGuid);
    QVERIFY(flow.isPersist());
    QCOMPARE(flow.id, m_first.flowId);
    QCOMPARE(flow.jobName, m_first.jobName);
    QCOMPARE(flow.flowGuid, m_first.flowGuid);
    QCOMPARE(flow.flowStatus, 1);
    QCOMPARE(flow.checkFlag, 2);
    QCOMPARE(flow.createUserId, 0);
    QCOMPARE(flow.origFileGuid, m_first.fileGuid);
}

void ReadingTest::questionsOfAJobInOrder()
{
    const int first = m_home.addQuestion(m_first);
    m_home.addQuestion(m_second);
    const int second = m_home.addQuestion(m_first);
    m_home.set(QStringLiteral("questions"), QStringLiteral("check_flag"), 3, second);
    std::vector<Model::Odbpp_Questions> rows;
    QVERIFY(BLL::Odbpp_QuestionsBll().select({}, {{"JobId", m_first.flowId}}, rows));
    QCOMPARE(rows.size(), std::size_t(2));
    QCOMPARE(rows[0].id, first);
    QCOMPARE(rows[0].jobId, m_first.flowId);
    QCOMPARE(rows[0].title, std::string("孔径"));
    QCOMPARE(rows[0].description, std::string("?"));
    QCOMPARE(rows[1].id, second);
    QCOMPARE(rows[1].checkFlag, 3);
    QVERIFY(BLL::Odbpp_QuestionsBll().select({}, {{"Id", second}}, rows));
    QCOMPARE(rows.size(), std::size_t(1));
}

void ReadingTest::usersByNameWithoutTheDisabled()
{
    m_home.addUser(QStringLiteral("checker"), {}, 3, 10);
    const int gone = m_home.addUser(QStringLiteral("gone"), {}, 3, 10);
    m_home.set(QStringLiteral("users"), QStringLiteral("disabled"), 1, gone);
    std::vector<Model::User_View> rows;
    QVERIFY(BLL::User_ViewBll().select({}, {}, rows));
    QCOMPARE(rows.size(), std::size_t(2));
    QCOMPARE(rows[0].realName, std::string("CHECKER"));
    QCOMPARE(rows[0].department, 3);
    QCOMPARE(rows[0].post, 10);
    QCOMPARE(rows[1].realName, std::string("ORDINARY"));
    QVERIFY(BLL::User_ViewBll().select({{"LoginName", "checker"}}, {{"Post", 10}}, rows));
    QCOMPARE(rows.size(), std::size_t(1));
}

void ReadingTest::orderOfAFlow()
{
    const auto order = BLL::Odbpp_OrdersBll().getOrdersByFlowGuid(m_second.flowGuid);
    QVERIFY(order.isPersist());
    QCOMPARE(order.flowGuid, m_second.flowGuid);
    QCOMPARE(order.payment, 0);
    QCOMPARE(order.suffix, std::string("zip"));
    m_home.set(QStringLiteral("orders"), QStringLiteral("payment"), 1, order.id);
    QCOMPARE(BLL::Odbpp_OrdersBll().getOrdersByFlowGuid(m_second.flowGuid).payment, 1);
}

void ReadingTest::robotParameters()
{
    m_home.database().run(
        QStringLiteral("INSERT INTO robot_params (job_name, params, update_time) "
                       "VALUES ('A1B000001', 'layers=4|mode=快', '2026-01-01T00:00:00.000Z')"));
    QCOMPARE(DBS_API::getWebRobotParaByJobName(m_first.jobName), std::string("layers=4|mode=快"));
}

void ReadingTest::nothingFoundIsNoFailure()
{
    Tests::NoticeLog log;
    std::vector<Model::Odbpp_JobFlow> flows(1);
    QVERIFY(BLL::Odbpp_JobFlowBll().select({{"FlowGUID", "none"}}, {}, flows));
    QVERIFY(flows.empty());
    std::vector<Model::Odbpp_Questions> questions(1);
    QVERIFY(BLL::Odbpp_QuestionsBll().select({}, {{"JobId", 99}}, questions));
    QVERIFY(questions.empty());
    QVERIFY(!BLL::Odbpp_JobFlowBll().getFlowByGuid("none").isPersist());
    QVERIFY(!BLL::Odbpp_OrdersBll().getOrdersByFlowGuid("none").isPersist());
    m_home.database().run(QStringLiteral("DELETE FROM orders"));
    QVERIFY(!BLL::Odbpp_OrdersBll().getOrdersByFlowGuid(m_first.flowGuid).isPersist());
    QVERIFY(DBS_API::getWebRobotParaByJobName(m_first.jobName).empty());
    QVERIFY(DBS_API::getWebRobotParaByJobName("none").empty());
    QVERIFY(log.notices.isEmpty());
}

void ReadingTest::unknownKeysAreRefused_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("no such key") << QByteArray("Colour");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a column's own name") << QByteArray("job_name");
    QTest::newRow("SQL") << QByteArray("f.id = 1 OR f.id");
    QTest::newRow("wrong case") << QByteArray("flowguid");
    QTest::newRow("1 MB") << QByteArray(1000000, 'x');
}

void ReadingTest::unknownKeysAreRefused()
{
    QFETCH(QByteArray, key);
    std::vector<Model::Odbpp_JobFlow> flows(1);
    std::vector<Model::Odbpp_Questions> questions(1);
    std::vector<Model::User_View> users(1);
    for (int i = 0; i < 4; ++i)
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("unknown search key")));
    Tests::NoticeLog log;
    QVERIFY(!BLL::Odbpp_JobFlowBll().select({{key.toStdString(), "x"}}, {}, flows));
    QVERIFY(!BLL::Odbpp_JobFlowBll().select({}, {{key.toStdString(), 1}}, flows));
    QVERIFY(!BLL::Odbpp_QuestionsBll().select({{key.toStdString(), "x"}}, {}, questions));
    QVERIFY(!BLL::User_ViewBll().select({}, {{key.toStdString(), 1}}, users));
    QVERIFY(flows.empty() && questions.empty() && users.empty());
    QCOMPARE(log.notices.size(), 4);
}

void ReadingTest::awkwardValuesMatchNothing_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("fails");
    QTest::newRow("quotes") << QByteArray("' OR '1'='1") << false;
    QTest::newRow("wildcard") << QByteArray("%") << false;
    QTest::newRow("emoji") << QByteArray("😀") << false;
    QTest::newRow("NUL") << QByteArray("a\0b", 3) << true;
    QTest::newRow("invalid UTF-8") << QByteArray("\xff") << true;
    QTest::newRow("1 MB") << QByteArray(1000000, 'x') << true;
}

void ReadingTest::awkwardValuesMatchNothing()
{
    QFETCH(QByteArray, value);
    QFETCH(bool, fails);
    if (fails) {
        for (int i = 0; i < 3; ++i)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("a text")));
    }
    std::vector<Model::Odbpp_JobFlow> flows(1);
    QCOMPARE(BLL::Odbpp_JobFlowBll().select({{"FlowGUID", value.toStdString()}}, {}, flows),
             !fails);
    QVERIFY(flows.empty());
    QVERIFY(!BLL::Odbpp_OrdersBll().getOrdersByFlowGuid(value.toStdString()).isPersist());
    QVERIFY(DBS_API::getWebRobotParaByJobName(value.toStdString()).empty());
}

void ReadingTest::nobodyReadsNothing()
{
    m_home.addQuestion(m_first);
    m_home.signIn(0);
    Tests::NoticeLog log;
    std::vector<Model::Odbpp_JobFlow> flows(1);
    QVERIFY(!BLL::Odbpp_JobFlowBll().select({}, {}, flows));
    QVERIFY(flows.empty());
    QVERIFY(!BLL::Odbpp_JobFlowBll().getFlowByGuid(m_first.flowGuid).isPersist());
    std::vector<Model::Odbpp_Questions> questions(1);
    QVERIFY(!BLL::Odbpp_QuestionsBll().select({}, {}, questions));
    QVERIFY(questions.empty());
    QVERIFY(DBS_API::getWebRobotParaByJobName(m_first.jobName).empty());
    std::vector<Model::User_View> users(1);
    QVERIFY(!BLL::User_ViewBll().select({}, {}, users));
    QVERIFY(!BLL::Odbpp_OrdersBll().getOrdersByFlowGuid(m_first.flowGuid).isPersist());
    QCOMPARE(log.notices.size(), 6);
}

/// What a desk was shown is for its user to look at more closely, in scope or not.
void ReadingTest::anySignedInUserReadsByKey()
{
    m_home.addQuestion(m_first);
    QVERIFY(m_home.session().context->actor().roles.isEmpty());
    QVERIFY(BLL::Odbpp_JobFlowBll().getFlowByGuid(m_first.flowGuid).isPersist());
    std::vector<Model::Odbpp_Questions> questions;
    QVERIFY(BLL::Odbpp_QuestionsBll().select({}, {{"JobId", m_first.flowId}}, questions));
    QCOMPARE(questions.size(), std::size_t{1});
}

KODMS_TEST_MAIN(ReadingTest, QCoreApplication)

#include "ReadingTest.moc"
